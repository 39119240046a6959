// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QString>

#include <chrono>

namespace ostrel {

/// An advisory lock that all copies of the program honour, on a file that only serves for it. The kernel drops the lock
/// when the object or its process goes, however it goes.
class FileLock {
public:
    /// Makes the file when it is missing. A failure is a RunTimeError, also that something else than a plain file
    /// is there.
    explicit FileLock(const QString &path);

    /// False when another copy holds the lock in any way.
    bool tryExclusive();
    /// Waits for its turn, but not longer; false when it did not come.
    bool exclusiveWithin(std::chrono::milliseconds time);
    /// These wait for their turn, and give up what was held.
    void exclusive();
    void shared();

private:
    void wait(int operation);

    QString path_;
    Descriptor file_;
};

} // namespace ostrel
