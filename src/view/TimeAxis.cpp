// SPDX-License-Identifier: MIT
#include "view/TimeAxis.h"

#include "base/Numbers.h"
#include "documents/ChartViewOf.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ostrel {

namespace {

constexpr double smallestWindow = 0.1;
constexpr double largestWindow = std::numeric_limits<float>::max(); // the chart's axis is a float
constexpr float emptyFullView = 10.0F;

/// The whole minute at which an axis over a run of this length ends.
float wholeMinuteEnd(float lastTime) { return static_cast<float>(rounded32(lastTime + 0.5)); }

} // namespace

TimeAxis::TimeAxis(TabStates &tabs, const RunState &run, const Charts &charts, const TimeControls &controls,
                   const ScrollBars &bars, AxisPanels &axes, const NumericKeys &keys, Prompts &prompts,
                   std::function<void()> focusChart)
    : tabs_(tabs), run_(run), charts_(charts), controls_(controls), bars_(bars), axes_(axes), keys_(keys),
      prompts_(prompts), focusChart_(std::move(focusChart)) {}

void TimeAxis::attach() {
    for (int i = 0; i < 2; ++i)
        controls_.optTimeAxis[i]->Click = [this, i] { optTimeAxis_Click(i); };
    controls_.optTimeAxis[0]->ClickAgain = [this] { SetFullView(); };
    for (int i = 0; i < tabCount; ++i) {
        bars_[i].Change = [this, i] { ScrollChart_Change(i); };
        bars_[i].Scroll = [this, i] { ScrollChart_Scroll(i); };
        bars_[i].GotFocus = [this, i] { ScrollChart_GotFocus(i); };
    }
    controls_.txtChartTime->Change = [this] { txtChartTime_Change(); };
    controls_.txtChartTime->GotFocus = [this] { txtChartTime_GotFocus(); };
    controls_.txtChartTime->KeyPress = [this](int KeyAscii) { return txtChartTime_KeyPress(KeyAscii); };
    controls_.cmdSetTime->Click = [this] { cmdSetTime_Click(); };
}

void TimeAxis::GetZoomedTime(float &ZoomedTimeFrom, float &ZoomedTimeTo) const {
    const ChartViewState &view = tabs_.currentView();
    ZoomedTimeFrom = view.TimeFrom;
    ZoomedTimeTo = view.TimeFrom + view.TimeSpan;
}

void TimeAxis::SetFullView() {
    controls_.cmdSetTime->setEnabled(false);
    chart().setTimeAxisMin(0);
    tabs_.currentView().TimeFrom = 0;
    const float lastTime = chart().GetLastTime();
    chart().setTimeAxisMax(lastTime > 0 ? wholeMinuteEnd(lastTime) : emptyFullView);
    chart().Redraw();
    bar().setEnabled(false);
    controls_.txtChartTime->setEnabled(false);
    tabs_.FullView[tabs_.CurrentChart] = true;
}

bool TimeAxis::showsWholeRun() const {
    const Run &C = chart();
    return C.TimeAxisMin() == 0 && C.TimeAxisMax() >= C.GetLastTime();
}

void TimeAxis::EnableScrollBar() { bar().setEnabled(tabs_.CurrentChart != recorderChart || !run_.Recording); }

void TimeAxis::SetScrollRange(qint32 Value) {
    bars_.fit(tabs_.CurrentChart, chart().GetLastTime(), tabs_.currentView().TimeSpan, Value);
}

void TimeAxis::ShowAxisState() {
    axes_.showState(0);
    axes_.showState(1);
    controls_.txtChartTime->setText(fixedNumber(tabs_.currentView().TimeSpan, 1));
}

void TimeAxis::cmdSetTime_Click() {
    const double minutes = entryValue(*controls_.txtChartTime);
    ChartViewState &view = tabs_.currentView();
    if (minutes < smallestWindow || minutes > largestWindow) {
        controls_.txtChartTime->setText(fixedNumber(view.TimeSpan, 1));
        prompts_.beep();
        return;
    }
    const float right = placeWindow(minutes);
    view.TimeSpan = static_cast<float>(tabs_.WindowMinutes[tabs_.CurrentChart]);
    chart().setTimeAxisMin(view.TimeFrom);
    chart().setTimeAxisMax(right);
    chart().Redraw();
    SetScrollRange(rounded32(chart().TimeAxisMin()));
    controls_.cmdSetTime->setEnabled(false);
}

float TimeAxis::placeWindow(double minutes) {
    double &window = tabs_.WindowMinutes[tabs_.CurrentChart];
    ChartViewState &view = tabs_.currentView();
    window = minutes;
    const float lastTime = chart().GetLastTime();
    const auto reach = static_cast<float>(chart().TimeAxisMin() + minutes);
    if (reach <= lastTime || lastTime <= 0)
        return static_cast<float>(view.TimeFrom + minutes);

    const float right = wholeMinuteEnd(lastTime);
    view.TimeFrom = static_cast<float>(right - minutes);
    if (view.TimeFrom <= 0) {
        // The window is longer than the run: the run as a whole becomes the window.
        view.TimeFrom = 0;
        window = right;
        controls_.txtChartTime->setText(fixedNumber(right, 1));
    }
    return right;
}

void TimeAxis::optTimeAxis_Click(int Index) {
    if (Index == 0) {
        SetFullView();
        return;
    }
    EnableScrollBar();
    if (!tabs_.ZoomUpdating)
        cmdSetTime_Click();
    tabs_.FullView[tabs_.CurrentChart] = false;
    controls_.txtChartTime->setEnabled(true);
    controls_.txtChartTime->selectWhole();
    controls_.txtChartTime->setFocus();
}

void TimeAxis::ScrollChart_Change(int Index) {
    if ((Index == recorderChart && run_.Recording) || !isWindowChosen() || tabs_.ZoomUpdating)
        return;
    Run &C = chart();
    ChartViewState &view = tabs_.currentView();
    C.setTimeAxisMin(static_cast<float>(bar().Value()));
    if (const float lastTime = C.GetLastTime(); lastTime > 0 && lastTime < C.TimeAxisMin())
        C.setTimeAxisMin(std::max(static_cast<float>(lastTime - view.TimeSpan + 0.1), 0.0F));
    view.TimeFrom = C.TimeAxisMin();
    C.setTimeAxisMax(C.TimeAxisMin() + view.TimeSpan);
    C.Redraw();
    focusChart_();
}

void TimeAxis::ScrollChart_GotFocus(int /*Index*/) { focusChart_(); }

void TimeAxis::txtChartTime_Change() {
    const QString state = fixedNumber(tabs_.currentView().TimeSpan, 1);
    controls_.cmdSetTime->setEnabled(controls_.txtChartTime->Text() != state);
}

void TimeAxis::txtChartTime_GotFocus() { controls_.txtChartTime->selectWhole(); }

int TimeAxis::txtChartTime_KeyPress(int KeyAscii) {
    return keys_.entryKey(KeyAscii, *controls_.txtChartTime, false, [&] { cmdSetTime_Click(); });
}

void TimeAxis::Chart_Zoomed(float ZoomedTimeFrom, float ZoomedTimeTo, float UvMin, float UvMax, float CondMin,
                            float CondMax) {
    tabs_.Zoomed[tabs_.CurrentChart] = true;
    tabs_.currentView() = {UvMin, UvMax, CondMin, CondMax, ZoomedTimeFrom, ZoomedTimeTo - ZoomedTimeFrom};
    tabs_.ZoomUpdating = true;
    SetScrollRange(rounded32(ZoomedTimeFrom));
    ShowAxisState();
    tabs_.FullView[tabs_.CurrentChart] = false;
    controls_.optTimeAxis[1]->setValue(true);
    tabs_.ZoomUpdating = false;
}

void TimeAxis::Chart_Unzoomed() {
    tabs_.Zoomed[tabs_.CurrentChart] = false;
    if (isWindowChosen())
        controls_.optTimeAxis[0]->setValue(true);
    else
        SetFullView(); // the axes from before the zoom may be those of a window
    const Run &C = chart();
    tabs_.currentView() = chartViewOf(C, tabs_.WindowMinutes[tabs_.CurrentChart]);
    SetScrollRange(rounded32(C.TimeAxisMin()));
    ShowAxisState();
}

} // namespace ostrel
