// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "view/MainControls.h"

/// Keeps the recorder's time axis ahead of the newest sample, whichever tab is in front.
class LiveView {
public:
    LiveView(TabStates &tabs, Run &recorder, const TimeControls &controls)
        : tabs_(tabs), recorder_(recorder), controls_(controls) {}

    /// Draws the new stretch of trace; the axis jumps ahead by a margin when the newest sample has left it.
    void UpdateLiveView();
    /// Sets the recorder's bar to the end of the data. Raises overflow (6) for a run beyond 16-bit minutes.
    void recorderToEnd();

private:
    void moveAxis();

    TabStates &tabs_;
    Run &recorder_;
    TimeControls controls_;
};
