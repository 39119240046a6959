// SPDX-License-Identifier: MIT
#include "view/LiveView.h"

namespace ostrel {

namespace {

constexpr float emptyFullView = 10; // minutes

} // namespace

void LiveView::UpdateLiveView() {
    if (!recorder_.IsLastPointVisible()) {
        moveAxis();
        tabs_.ChartViews[recorderChart].TimeFrom = recorder_.TimeAxisMin();
        recorder_.Redraw();
    }
    recorder_.DrawNewData();
}

void LiveView::moveAxis() {
    const float lastTime = recorder_.GetLastTime();
    const double window = tabs_.WindowMinutes[recorderChart];
    // The time mode of the tab in front decides, also while that is a file's tab and not the recorder's.
    if (controls_.optTimeAxis[0]->Value()) {
        recorder_.setTimeAxisMax(lastTime > 0 ? static_cast<float>(lastTime * 1.25) : emptyFullView);
        if (recorder_.TimeAxisMin() > lastTime) // the recorder was cleared while it showed a later stretch
            recorder_.setTimeAxisMin(0);
        return;
    }
    recorder_.setTimeAxisMax(static_cast<float>(lastTime + window / 10));
    recorder_.setTimeAxisMin(static_cast<float>(recorder_.TimeAxisMax() - window));
}

void LiveView::recorderToEnd() {
    bars_.toEnd(recorderChart, recorder_.GetLastTime(), tabs_.WindowMinutes[recorderChart]);
}

} // namespace ostrel
