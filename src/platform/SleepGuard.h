// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace ostrel {

/// Keeps the computer awake while data is being recorded.
class SleepGuard {
public:
    virtual ~SleepGuard() = default;

    /// While held, the computer does not fall asleep by itself. Cheap to call again with the same.
    virtual void setHeld(bool held) = 0;

    /// The computer is about to sleep all the same: somebody closed the lid or forced it. Called only while held. The
    /// computer sleeps after this returns, or some seconds after it was called.
    std::function<void()> aboutToSleep;
};

} // namespace ostrel
