// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "platform/SleepGuard.h"
#include "platform/Timer.h"

namespace ostrel {

/// Keeps the computer awake while a recording or the log is on.
class StayAwake {
public:
    StayAwake(const RunState &run, const Timer &TimerSaveLog, SleepGuard &sleep)
        : run_(run), TimerSaveLog_(TimerSaveLog), sleep_(sleep) {}

    /// Call this after anything that may have started or ended one of the two.
    void look() { sleep_.setHeld(run_.Recording || TimerSaveLog_.Enabled()); }

private:
    const RunState &run_;
    const Timer &TimerSaveLog_;
    SleepGuard &sleep_;
};

} // namespace ostrel
