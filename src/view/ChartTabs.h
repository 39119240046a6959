// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "view/CommandStates.h"
#include "view/MainControls.h"
#include "view/TimeAxis.h"

#include <QTabBar>

#include <functional>

namespace ostrel {

/// Brings the chart of a tab to the front and updates all that the tabs share: axis entries, time mode, commands. Tabs
/// without a file cannot be selected.
class ChartTabs {
public:
    /// `bringToFront` puts a chart and its bar above the others.
    ChartTabs(TabStates &tabs, const Charts &charts, QTabBar &TabChart, const TimeControls &controls, TimeAxis &time,
              CommandStates &commands, std::function<void(int chart)> bringToFront);

    /// Connects the tab bar to TabChart_Click.
    void attach();

    /// Selects a tab with the same effect as a click of the operator, also when it is in front already.
    void select(int tab);
    void TabChart_Click();

    /// Sets a tab's caption and tool tip, as plain text.
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
