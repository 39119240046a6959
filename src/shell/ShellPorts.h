// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What the shell needs of the window and the menus above it.

/// The command that saves the running log, here also one that a crash left behind.
class LogSaver {
public:
    virtual ~LogSaver() = default;
    /// Saves what stands in LogDirectory; LogSaved tells how it went.
    virtual void mnuSaveLog_Click() = 0;
};

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
