// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileLock.h"

namespace ostrel {

/// Tells whether another copy of the program was running when this one started. Held for the life of the program: all
/// copies share one lock, so that the answer stays right after the first copy has ended.
class InstanceLock {
public:
    /// `folder` must exist and be writable for all copies; a failure is a RunTimeError.
    explicit InstanceLock(const QString &folder);

    bool PrevInstance() const { return previous_; }

private:
    FileLock running_;
    bool previous_ = false;
};

} // namespace ostrel
