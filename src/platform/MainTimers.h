// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Timer.h"

#include <memory>

namespace ostrel {

/// The timers of the main window.
struct MainTimers {
    std::unique_ptr<Timer> Process;
    std::unique_ptr<Timer> CheckComData;
    std::unique_ptr<Timer> StopWaitForMethod;
    std::unique_ptr<Timer> SaveLog;
};

} // namespace ostrel
