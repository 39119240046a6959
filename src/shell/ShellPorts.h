// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// The interface through which the shell uses the main window.

/// The main window for start-up and for the windows of the check buttons.
class ShellWindow {
public:
    virtual ~ShellWindow() = default;

    virtual void setCaption(const QString &caption) = 0;
    /// The Value of a toolbar button: pressed in or not.
    virtual void setButtonValue(const QString &button, bool pressed) = 0;
    virtual bool buttonValue(const QString &button) const = 0;
    virtual void setToolTip(const QString &button, const QString &text) = 0;
    /// Runs the click routine of a button. Value must already be the one after the click.
    virtual void Toolsbar_ButtonClick(const QString &button) = 0;
};

} // namespace ostrel
