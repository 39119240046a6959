// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QSocketNotifier>

#include <functional>

namespace ostrel {

/// Turns the first signal that asks the program to end (terminate, hang-up, interrupt) into a call from the event loop,
/// from inside a modal dialog too. Later signals do nothing. A signal that was ignored when the program was started, as
/// under nohup, stays ignored. Only one object at a time in a process.
class EndSignals {
public:
    explicit EndSignals(std::function<void()> end);
    /// From then on the signals end the process again.
    ~EndSignals();
    EndSignals(const EndSignals &) = delete;
    EndSignals &operator=(const EndSignals &) = delete;

private:
    Descriptor bell_;
    QSocketNotifier notifier_;
};

} // namespace ostrel
