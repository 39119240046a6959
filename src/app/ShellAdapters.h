// SPDX-License-Identifier: MIT
#pragma once

#include "shell/ShellPorts.h"
#include "view/Commands.h"
#include "view/frmMain.h"

/// The main window and its menus, as the shell asks for them.

class MainShellWindow : public ShellWindow {
public:
    explicit MainShellWindow(frmMain &window) : window_(window) {}

    void setCaption(const QString &caption) override { window_.setWindowTitle(caption); }
    void setButtonValue(const QString &button, bool pressed) override { window_.action(button)->setChecked(pressed); }

private:
    frmMain &window_;
};

class MenuLogSaver : public LogSaver {
public:
    explicit MenuLogSaver(const Commands &commands) : commands_(commands) {}

    void mnuSaveLog_Click() override { commands_.run(QStringLiteral("mnuSaveLog")); }

private:
    const Commands &commands_;
};
