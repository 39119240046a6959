// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

#include <chrono>

namespace ostrel {

/// The computer's date and time, and a monotonic time.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    /// Monotonic, from the start of the program or earlier; unaffected when date and time are set.
    virtual std::chrono::milliseconds uptime() const = 0;
};

} // namespace ostrel
