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

    /// Connects the controls to the handlers below; View::bind connects the charts' signals.
    void attach();

    /// The stretch of time that is shown.
    void GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const;
    void SetFullView();
    /// The chart in front shows its run from the beginning, with nothing before it, to the end.
    bool showsWholeRun() const;
    /// The recorder's bar stays disabled during a recording: then the live view moves the window.
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

    /// Call this when the operator has zoomed on the chart in front, which already shows the rectangle.
    void Chart_Zoomed(float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin, float UvMax, float CondMin, float CondMax);
    /// Call this when the operator has left the zoom and the chart has its former axes back.
    void Chart_Unzoomed();

private:
    Run &chart() const { return *charts_[tabs_.CurrentChart]; }
    ScrollEntry &bar() const { return bars_[tabs_.CurrentChart]; }
    bool isWindowChosen() const { return controls_.optTimeAxis[1]->Value(); }
    /// Places a window of `minutes` on the run, moved back if it would reach beyond the data. Returns its right end.
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
