// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <functional>

namespace ostrel {

/// Turns the signals that ask the program to end (interrupt, terminate, hang-up) into a call from the event loop. A
/// signal that was ignored at the program's start stays ignored. SIGPIPE is ignored too. Create it before any other
/// thread starts.
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
