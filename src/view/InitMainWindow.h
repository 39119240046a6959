// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "view/AxisPanels.h"
#include "view/CommandStates.h"
#include "view/MainControls.h"

#include <functional>

/// What the set-up of the main window works on, and what others do for it on the way.
struct MainWindowSetUp {
    Values &values;
    const Charts &charts;
    const TimeControls &time;
    AxisPanels &axes;
    CommandStates &commands;

    std::function<void()> SetHelpContexts;
    std::function<void(const QString &caption)> setCaption;
    std::function<void()> ReadSettings;
    std::function<void(float width, float height)> resize; ///< the outer size, in twips
    std::function<void(int chart)> bringToFront;
    std::function<bool()> choosePort; ///< false: no port is free, and the program is on its way out
    std::function<void()> ComDataLost;
    std::function<void()> openPort;
};

/// Sets the window up for the first showing, with the handlers already on the controls. False when the program has no
/// port and is on its way out.
bool InitMainWindow(const MainWindowSetUp &on);
