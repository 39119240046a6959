// SPDX-License-Identifier: MIT
#pragma once

#include "shell/ShellPorts.h"
#include "view/Clicks.h"
#include "view/frmMain.h"

namespace ostrel {

/// The main window and its menus for the shell.

class MainShellWindow : public ShellWindow {
public:
    MainShellWindow(frmMain &window, const Clicks &clicks) : window_(window), clicks_(clicks) {}

    void setCaption(const QString &caption) override { window_.setWindowTitle(caption); }
    void setButtonValue(const QString &button, bool pressed) override { window_.action(button)->setChecked(pressed); }
    bool buttonValue(const QString &button) const override { return window_.action(button)->isChecked(); }
    void setToolTip(const QString &button, const QString &text) override { window_.action(button)->setToolTip(text); }
    void Toolsbar_ButtonClick(const QString &button) override { clicks_.Toolsbar_ButtonClick(button); }

private:
    frmMain &window_;
    const Clicks &clicks_;
};

} // namespace ostrel
