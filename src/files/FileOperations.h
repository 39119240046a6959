// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <dirent.h>
#include <sys/types.h>
#include <sys/uio.h>

#include <cstddef>
#include <functional>
#include <system_error>

namespace ostrel {

/// The calls of the operating system that write and read the disk, one for one: -1 and errno for a failure. Tests
/// replace the disk here.
class FileOperations {
public:
    virtual ~FileOperations() = default;

    virtual int open(const char *path, int flags, mode_t mode);
    virtual ssize_t readAt(int fd, const iovec *pieces, int count, off_t position); ///< preadv
    virtual const dirent *nextEntry(DIR *folder);                                   ///< readdir
    virtual off_t dataFrom(int fd, off_t position); ///< where a file's next data begins, ENXIO after the last
    virtual ssize_t write(int fd, const void *data, std::size_t size);
    virtual ssize_t writeAt(int fd, const void *data, std::size_t size, off_t position); ///< pwrite
    virtual int chmod(int fd, mode_t mode);
    virtual int sync(int fd);
    virtual int syncData(int fd); ///< the content, and only the metadata needed to read it
    virtual int close(int fd);
    virtual int rename(const char *from, const char *to);
    virtual int link(const char *from, const char *to); ///< a second name of the same file
    virtual int remove(const char *path);
    virtual int makeFolder(const char *path, mode_t mode);
    virtual int removeFolder(const char *path);

    /// The computer's own disk, used wherever no other one is passed.
    static FileOperations &system();

protected:
    /// `disk` replaces the computer's own; null restores that. References from system() are not updated: replace the
    /// disk before the program under test starts, and restore it after the program has ended.
    static void standIn(FileOperations *disk);
};

/// Continues after a short write or an interruption. False, with errno, when not everything could be written.
bool writeAll(FileOperations &operations, int fd, const void *data, std::size_t size);
/// Brings the entries of a folder to the disk. False, with errno, when that failed.
bool syncFolder(FileOperations &operations, const char *path);
/// Calls `take` with each name in a folder, hidden ones too, without "." and "..", until it returns false. The error is
/// that of the operating system (errno).
std::error_code eachName(FileOperations &operations, const char *folder, const std::function<bool(const char *)> &take);
/// The same as a sorted list. After an error `names` holds the names read before it.
std::error_code listFolder(FileOperations &operations, const QString &folder, QStringList &names);
/// A folder for the user alone (0700), regardless of the umask; -1, with errno, when that failed.
int makePrivateFolder(FileOperations &operations, const char *path);

} // namespace ostrel
