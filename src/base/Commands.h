// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <map>
#include <utility>

namespace ostrel {

/// Every click routine under the name of its control. Menu, button, key, decoder and error route all come through here.
/// A routine that the program itself runs does not check whether its menu item is enabled. Created first and filled
/// last, so that callers and routines need not know each other.
class Commands {
public:
    void bind(const QString &control, std::function<void()> routine) { routines_[control] = std::move(routine); }
    /// An unbound name is a programming error (std::out_of_range).
    void run(const QString &control) const { routines_.at(control)(); }

private:
    std::map<QString, std::function<void()>> routines_;
};

} // namespace ostrel
