// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "platform/Prompts.h"
#include "view/AxisPanels.h"
#include "view/MainControls.h"
#include "view/NumericKeys.h"
#include "view/ScrollBars.h"

#include <functional>

namespace ostrel {

/// The time axis of the chart in front: the full view, a window that a scroll bar moves along the run, or a zoom made
/// on the chart. Times are minutes from the start of the run; bars count whole minutes of 16 bits.
class TimeAxis {
public:
    /// `focusChart` gives the keyboard focus to the chart in front.
    TimeAxis(TabStates &tabs, const RunState &run, const Charts &charts, const TimeControls &controls,
             const ScrollBars &bars, AxisPanels &axes, const NumericKeys &keys, Prompts &prompts,
             std::function<void()> focusChart);

    /// Hangs the handlers below on the controls; the charts' own events are connected by who owns them.
    void attach();

    /// The stretch of time that is shown.
    void GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const;
    void SetFullView();
    /// The recorder's bar stays off during a recording: then the live view owns its window.
    void EnableScrollBar();
    /// Fits the bar to the run and the window, and moves it to `Value` minutes; see ScrollBars::fit.
    void SetScrollRange(qint32 Value);
    /// Writes all five axis entries from the state of the chart in front.
    void ShowAxisState();

    void cmdSetTime_Click();
    void optTimeAxis_Click(int Index);
    void ScrollChart_Change(int Index);
    void ScrollChart_Scroll(int Index) { ScrollChart_Change(Index); }
    void ScrollChart_GotFocus(int Index);
    void txtChartTime_Change();
    void txtChartTime_GotFocus();
    int txtChartTime_KeyPress(int KeyAscii);

    /// The operator has zoomed on the chart in front, which shows the rectangle already.
    void Chart_Zoomed(float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin, float UvMax, float CondMin, float CondMax);
    /// The operator has left the zoom; the chart has its former axes back.
    void Chart_Unzoomed();

private:
    Run &chart() const { return *charts_[tabs_.CurrentChart]; }
    ScrollEntry &bar() const { return bars_[tabs_.CurrentChart]; }
    bool isWindowChosen() const { return controls_.optTimeAxis[1]->Value(); }
    /// Places a window of `minutes` on the run, pulled back when it would reach beyond the data; answers its right end.
    float placeWindow(double minutes);

    TabStates &tabs_;
    const RunState &run_;
    const Charts &charts_;
    TimeControls controls_;
    const ScrollBars &bars_;
    AxisPanels &axes_;
    const NumericKeys &keys_;
    Prompts &prompts_;
    std::function<void()> focusChart_;
};

} // namespace ostrel
