// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

#include <chrono>

namespace ostrel {

/// The computer's date and time, and a time that nobody sets.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    /// Runs on evenly from the start of the program or earlier, whatever is done to date and time.
    virtual std::chrono::milliseconds uptime() const = 0;
};

} // namespace ostrel
