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
#include "view/WindowPlace.h"
#include "view/frmMain.h"

namespace ostrel {

/// The main window and its rules: all units of the view, in the order in which they are made.
struct View {
    /// What the units are made from and use.
    struct Uses {
        Values &values;
        const Commands &commands;
        Prompts &prompts;
        HelpViewer &help;
        SettingsStore &store;
        std::function<std::unique_ptr<Timer>(QWidget &window)> makePlaceTimer; ///< for WindowPlace
    };

    explicit View(const Uses &uses);
    View(const View &) = delete; // the units refer to each other
    View &operator=(const View &) = delete;

    /// Binds the click routines and connects controls and charts. The errors of the charts go to `errors`.
    void bind(Commands &commands, const Guard &guard, ErrorRoute &errors);

    /// Sets the window to its first state: its size and place, and the state of every tab. No tab is in use yet. `copy`
    /// is the number of this one among the running copies, from 1.
    void setUp(int copy);
    /// Shows the window, and keeps from then on where the operator leaves it.
    void comeUp();

    /// Adds the ways through a run to the context menu of a tab's chart.
    void addTo(QMenu &menu, int tab);

    /// The recorder's chart and those of the files.
    DocumentCharts documentCharts() const;

    frmMain window;
    WindowPlace place;
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
