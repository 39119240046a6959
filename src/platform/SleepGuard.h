// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace ostrel {

/// Keeps the computer awake while the instrument's data are being taken.
class SleepGuard {
public:
    virtual ~SleepGuard() = default;

    /// While held, the computer does not fall asleep by itself. Cheap to call again with the same.
    virtual void setHeld(bool held) = 0;

    /// The computer is to sleep all the same: someone has closed the lid, or forced it. Called only while held. It
    /// sleeps when the call has returned, or some seconds after it has begun.
    std::function<void()> aboutToSleep;
};

} // namespace ostrel
