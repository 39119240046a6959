// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QString>

namespace ostrel {

/// An advisory lock on a folder itself, without a file in it, which all copies of the program honour: while a copy
/// holds the lock of its log directory, no other copy takes the directory for a left-over. The kernel drops the lock
/// when the object is destroyed or its process ends in any way.
class FolderLock {
public:
    /// False when another process holds the lock, or the folder does not exist or was removed meanwhile. True, without
    /// a lock, when the file system has no locks, or the path is no folder or may not be opened.
    [[nodiscard]] bool tryTake(const QString &folder);

private:
    Descriptor folder_;
};

} // namespace ostrel
