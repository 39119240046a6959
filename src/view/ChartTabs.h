// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "view/CommandStates.h"
#include "view/MainControls.h"
#include "view/TimeAxis.h"

#include <QTabBar>

#include <functional>

namespace ostrel {

/// Brings the chart of a tab to the front, with all that the tabs share: axis entries, time mode, commands. Tabs
/// without a file cannot be selected.
class ChartTabs {
public:
    /// `bringToFront` puts a chart and its bar above the others.
    ChartTabs(TabStates &tabs, const Charts &charts, QTabBar &TabChart, const TimeControls &controls, TimeAxis &time,
              CommandStates &commands, std::function<void(int chart)> bringToFront);

    /// Follows the operator's selections from now on.
    void attach();

    /// Selects a tab by program, which counts as much as the operator's hand, also for the tab in front.
    void select(int tab);
    void TabChart_Click();

    /// The head of a tab: its caption and its tool tip, as plain text.
    void setHead(int tab, const QString &caption, const QString &toolTip);
    void takeHead(int tab, int from);

private:
    QString caption(int tab) const;

    TabStates &tabs_;
    const Charts &charts_;
    QTabBar &TabChart_;
    TimeControls controls_;
    TimeAxis &time_;
    CommandStates &commands_;
    std::function<void(int)> bringToFront_;
};

} // namespace ostrel
