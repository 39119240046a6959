// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Clock.h"

namespace ostrel {

class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
    std::chrono::milliseconds uptime() const override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }
};

} // namespace ostrel
