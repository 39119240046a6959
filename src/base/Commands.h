// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <map>
#include <utility>

namespace ostrel {

/// Every click routine under the name of its control. Menu, button, key, decoder and error route all come through here.
/// A routine that the program itself runs does not ask whether its menu item is enabled. Made first and filled last, so
/// that whoever calls and whoever is called need not know each other.
class Commands {
public:
    void bind(const QString &control, std::function<void()> routine) { routines_[control] = std::move(routine); }
    /// A name that nobody has bound is a fault of the program (std::out_of_range).
    void run(const QString &control) const { routines_.at(control)(); }

private:
    std::map<QString, std::function<void()>> routines_;
};

} // namespace ostrel
