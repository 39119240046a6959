// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "base/Guard.h"
#include "view/AxisPanels.h"
#include "view/ChartTabs.h"
#include "view/Clicks.h"
#include "view/CommandStates.h"
#include "view/HelpMenu.h"
#include "view/LiveView.h"
#include "view/MainAcquisitionWindow.h"
#include "view/MainDocumentWindow.h"
#include "view/MainSetupDialog.h"
#include "view/NumericKeys.h"
#include "view/TimeAxis.h"
#include "view/frmMain.h"

namespace ostrel {

/// The main window and its rules: one of each unit of the view, in the order of their making.
struct View {
    /// What it is made from, and what it reaches.
    struct Uses {
        Values &values;
        const Commands &commands;
        Prompts &prompts;
        HelpViewer &help;
    };

    explicit View(const Uses &uses);
    View(const View &) = delete; // the units know each other
    View &operator=(const View &) = delete;

    /// Its click routines, and what its controls and charts run. The errors of the charts go to `errors`.
    void bind(Commands &commands, const Guard &guard, ErrorRoute &errors);

    /// The window as it is first shown: its size, and the state of every tab. No tab is in use yet.
    void setUp();

    /// The recorder's chart and those of the files.
    DocumentCharts documentCharts() const;

    frmMain window;
    ScrollBars bars;
    NumericKeys keys;
    AxisPanels axes;
    TimeAxis time;
    LiveView live;
    CommandStates states;
    ChartTabs tabs;
    MainAcquisitionWindow acquisitionWindow;
    MainDocumentWindow documentWindow;
    MainSetupDialog setupDialog;
    HelpMenu helpMenu;
    Clicks clicks;

private:
    Values &values_;
};

} // namespace ostrel
