// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QString>

namespace ostrel {

/// An advisory lock on a folder itself, honoured by all copies of the program, which leaves nothing behind in it: while
/// a copy holds the lock of its log directory, no other takes that for a left-over. The kernel drops the lock when the
/// object or its process goes, however it goes.
class FolderLock {
public:
    /// False when another holds the lock, or when there is no such folder, or no longer. Where the file system knows no
    /// locks, or the folder may not be opened, nobody is kept off: true.
    [[nodiscard]] bool tryTake(const QString &folder);

private:
    Descriptor folder_;
};

} // namespace ostrel
