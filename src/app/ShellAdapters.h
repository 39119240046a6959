// SPDX-License-Identifier: MIT
#pragma once

#include "shell/ShellPorts.h"
#include "view/Commands.h"
#include "view/frmMain.h"

/// The main window and its menus, as the shell asks for them.

class MainShellWindow : public ShellWindow {
public:
    MainShellWindow(frmMain &window, const Commands &commands) : window_(window), commands_(commands) {}

    void setCaption(const QString &caption) override { window_.setWindowTitle(caption); }
    void setButtonValue(const QString &button, bool pressed) override { window_.action(button)->setChecked(pressed); }
    bool buttonValue(const QString &button) const override { return window_.action(button)->isChecked(); }
    void setToolTip(const QString &button, const QString &text) override { window_.action(button)->setToolTip(text); }
    void Toolsbar_ButtonClick(const QString &button) override { commands_.Toolsbar_ButtonClick(button); }

private:
    frmMain &window_;
    const Commands &commands_;
};

class MenuLogSaver : public LogSaver {
public:
    explicit MenuLogSaver(const Commands &commands) : commands_(commands) {}

    void mnuSaveLog_Click() override { commands_.run(QStringLiteral("mnuSaveLog")); }

private:
    const Commands &commands_;
};
