// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "view/MainControls.h"
#include "view/ScrollBars.h"

namespace ostrel {

/// Keeps the recorder's time axis ahead of the newest sample, whichever tab is in front.
class LiveView {
public:
    LiveView(TabStates &tabs, Run &recorder, const TimeControls &controls, const ScrollBars &bars)
        : tabs_(tabs), recorder_(recorder), controls_(controls), bars_(bars) {}

    /// Draws the new part of the trace. The axis jumps ahead by a margin when the newest sample has left it.
    void UpdateLiveView();
    /// Sets the recorder's bar to the end of the data; see ScrollBars::toEnd.
    void recorderToEnd();

private:
    void moveAxis();

    TabStates &tabs_;
    Run &recorder_;
    TimeControls controls_;
    const ScrollBars &bars_;
};

} // namespace ostrel
