// SPDX-License-Identifier: MIT
#pragma once

#include "base/Commands.h"
#include "base/Values.h"

#include <QString>

namespace ostrel {

/// Turns the operator's clicks on menu items and toolbar buttons into commands.
class Clicks {
public:
    Clicks(const Commands &commands, const TabStates &tabs) : commands_(commands), tabs_(tabs) {}

    /// A menu item or a toolbar button.
    void click(const QString &control) const;
    /// The toolbar button of this key.
    void Toolsbar_ButtonClick(const QString &Key) const;

private:
    const Commands &commands_;
    const TabStates &tabs_;
};

} // namespace ostrel
