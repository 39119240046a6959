// SPDX-License-Identifier: MIT
#include "view/WindowPorts.h"

#include <utility>

WindowPorts::WindowPorts(CommandStates &states, LiveView &live, LinkCommands &commands, WindowActs window)
    : states_(states), live_(live), commands_(commands), window_(std::move(window)) {}

void WindowPorts::showNoData() {
    switch (window_.askNoData()) {
    case NoDataAnswer::Ok:
        break;
    case NoDataAnswer::Setup:
        commands_.mnuComPort_Click();
        break;
    case NoDataAnswer::Exit:
        commands_.mnuExit_Click();
        break;
    }
}
