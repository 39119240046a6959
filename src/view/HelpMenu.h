// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HelpViewer.h"
#include "view/CommandStates.h"

#include <QWidget>

namespace ostrel {

/// The help topics of the main window and of its commands, and the menu that opens them.
class HelpMenu {
public:
    using Actions = CommandStates::Actions;

    HelpMenu(HelpViewer &viewer, QWidget &window, Actions actions);

    /// Gives the window and its menu items the numbers of their topics. The help file is in `folder`.
    void SetHelpContexts(const QString &folder);

    void mnuIntro_Click();
    void mnuIndex_Click();

private:
    void sendF1();

    HelpViewer &viewer_;
    QWidget &window_;
    Actions actions_;
};

} // namespace ostrel
