// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace ostrel {

/// A repeating timer. Ticks run on the user-interface thread, from inside modal dialogs too.
class Timer {
public:
    virtual ~Timer() = default;

    virtual bool Enabled() const = 0;
    /// Enabling a running timer does not restart its countdown; switching it off and on again does.
    virtual void setEnabled(bool on) = 0;
    /// Milliseconds.
    virtual int Interval() const = 0;

    /// Enables it with a whole interval ahead. From within its own tick too: otherwise it would not tick again before
    /// that has ended, which a box may hold up.
    void startAnew() {
        setEnabled(false);
        setEnabled(true);
    }

    std::function<void()> Tick;
};

} // namespace ostrel
