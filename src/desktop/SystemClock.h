// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Clock.h"

#include <ctime>

namespace ostrel {

class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
    std::chrono::milliseconds uptime() const override {
        timespec time{}; // the steady clock would stand still while the computer sleeps
        ::clock_gettime(CLOCK_BOOTTIME, &time);
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::seconds(time.tv_sec) +
                                                                     std::chrono::nanoseconds(time.tv_nsec));
    }
};

} // namespace ostrel
