// SPDX-License-Identifier: MIT
#include "view/LiveView.h"

#include "base/Numbers.h"

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
    // The mode of the tab in front decides, not the recorder's own: it steers the recorder's axis even behind a file.
    if (controls_.optTimeAxis[0]->Value()) {
        recorder_.setTimeAxisMax(static_cast<float>(lastTime * 1.25));
        return;
    }
    recorder_.setTimeAxisMax(static_cast<float>(lastTime + window / 10));
    recorder_.setTimeAxisMin(static_cast<float>(recorder_.TimeAxisMax() - window));
}

void LiveView::recorderToEnd() {
    // No floor at 0: after a run shorter than the window the bar's end lies below its beginning.
    ScrollEntry &bar = *controls_.ScrollChart[recorderChart];
    bar.setMax(rounded16(recorder_.GetLastTime() + 0.5 - tabs_.WindowMinutes[recorderChart]));
    bar.setValue(bar.Max());
}
