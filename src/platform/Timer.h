// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

/// A repeating timer. Ticks run on the user-interface thread, from inside modal dialogs too.
class Timer {
public:
    virtual ~Timer() = default;

    virtual bool Enabled() const = 0;
    /// Enabling a timer that is on leaves its countdown alone; switching it off and on again starts it anew.
    virtual void setEnabled(bool on) = 0;
    /// Milliseconds.
    virtual int Interval() const = 0;

    std::function<void()> Tick;
};
