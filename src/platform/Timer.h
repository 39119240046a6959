// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace ostrel {

/// A repeating timer. Ticks run on the user-interface thread, from inside modal dialogs too.
class Timer {
public:
    virtual ~Timer() = default;

    virtual bool Enabled() const = 0;
    /// Enabling a timer that is on leaves its countdown alone; switching it off and on again starts it anew.
    virtual void setEnabled(bool on) = 0;
    /// Milliseconds.
    virtual int Interval() const = 0;

    /// Off, after a last tick out of turn when it was on.
    void finish() {
        if (!Enabled())
            return;
        setEnabled(false);
        if (Tick)
            Tick();
    }

    std::function<void()> Tick;
};

} // namespace ostrel
