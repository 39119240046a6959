// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// What the shell needs of the window above it.

/// The main window as start-up and the windows of its check buttons see it.
class ShellWindow {
public:
    virtual ~ShellWindow() = default;

    virtual void setCaption(const QString &caption) = 0;
    /// The Value of a toolbar button: pressed in or not.
    virtual void setButtonValue(const QString &button, bool pressed) = 0;
    virtual bool buttonValue(const QString &button) const = 0;
    virtual void setToolTip(const QString &button, const QString &text) = 0;
    /// What a click on the button does, its Value being already that after the click.
    virtual void Toolsbar_ButtonClick(const QString &button) = 0;
};

} // namespace ostrel
