// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <functional>

namespace ostrel {

/// Turns the signals that ask the program to end (interrupt, terminate, hang-up) into a call from the event loop.
/// One that the program was started to ignore stays ignored, and a broken pipe ends nothing. Must be made before any
/// other thread starts.
class StopSignals {
public:
    explicit StopSignals(std::function<void()> stop);
    ~StopSignals();
    StopSignals(const StopSignals &) = delete;
    StopSignals &operator=(const StopSignals &) = delete;

private:
    int file_;
    QSocketNotifier notifier_;
};

} // namespace ostrel
