// SPDX-License-Identifier: MIT
#include "view/InitMainWindow.h"

#include "base/Numbers.h"
#include "documents/ChartViewOf.h"

namespace {

constexpr float startWidth = 8650.0F;
constexpr float startHeight = 6300.0F;
constexpr double startWindow = 10.0;

void setUpTab(const MainWindowSetUp &on, int tab) {
    TabStates &tabs = on.values.tabs;
    ScrollEntry &bar = *on.time.ScrollChart[tab];
    const Run &chart = *on.charts[tab];

    tabs.WindowMinutes[tab] = startWindow;
    bar.setSmallChange(1);
    bar.setLargeChange(10);
    bar.setMax(0);
    tabs.FullView[tab] = true;
    tabs.Zoomed[tab] = false;
    tabs.ChartViews[tab] = chartViewOf(chart, startWindow);
}

} // namespace

bool InitMainWindow(const MainWindowSetUp &on) {
    TabStates &tabs = on.values.tabs;

    on.values.DecimalPoint = decimalSeparator();
    on.axes.FillAxisLists();
    on.SetHelpContexts();
    on.setCaption(QStringLiteral("Ostrel MS - Velquin System: Default"));
    on.ReadSettings();
    tabs.CurrentChart = recorderChart;
    on.resize(startWidth, startHeight);
    for (int tab = 0; tab < tabCount; ++tab)
        setUpTab(on, tab);
    tabs.ChartSaved[recorderChart] = true;
    on.bringToFront(recorderChart);
    on.time.txtChartTime->setEnabled(false);
    on.time.cmdSetTime->setEnabled(false); // its entry was written before there was a window to compare it with

    if (!on.choosePort())
        return false;
    on.ComDataLost();
    tabs.ChartCount = 1;
    on.charts[recorderChart]->setChartTitle(QStringLiteral("Chart Recorder"));
    on.commands.setLogMenus(on.values.options.DataLogging);
    on.openPort();
    return true;
}
