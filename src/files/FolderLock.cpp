// SPDX-License-Identifier: MIT
#include "files/FolderLock.h"

#include <QFile>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace ostrel {

bool FolderLock::tryTake(const QString &folder) {
    folder_.reset(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder_)
        return errno != ENOENT;
    if (::flock(folder_.get(), LOCK_EX | LOCK_NB) != 0)
        return errno != EWOULDBLOCK;
    struct stat found {};
    return ::fstat(folder_.get(), &found) != 0 || found.st_nlink > 0; // the previous owner may have removed it
}

} // namespace ostrel
