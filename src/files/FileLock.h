// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QString>

#include <chrono>

namespace ostrel {

/// An advisory lock that all copies of the program honour, on a file that only serves for this. The kernel drops the
/// lock when the object is destroyed or its process ends in any way.
class FileLock {
public:
    /// Makes the file when it is missing. A failure is a RunTimeError, also when the path is not a plain file.
    explicit FileLock(const QString &path);

    /// False when another copy holds the lock, exclusive or shared.
    bool tryExclusive();
    /// Waits at most `time` for the lock; false when it was not free by then.
    bool exclusiveWithin(std::chrono::milliseconds time);
    /// These wait for the lock, and give up the one held before.
    void exclusive();
    void shared();

private:
    void wait(int operation);

    QString path_;
    Descriptor file_;
};

} // namespace ostrel
