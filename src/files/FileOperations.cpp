// SPDX-License-Identifier: MIT
#include "files/FileOperations.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

int FileOperations::open(const char *path, int flags, mode_t mode) { return ::open(path, flags | O_CLOEXEC, mode); }

ssize_t FileOperations::write(int fd, const void *data, std::size_t size) { return ::write(fd, data, size); }

int FileOperations::chmod(int fd, mode_t mode) { return ::fchmod(fd, mode); }

int FileOperations::sync(int fd) { return ::fsync(fd); }

int FileOperations::close(int fd) { return ::close(fd); }

int FileOperations::rename(const char *from, const char *to) { return std::rename(from, to); }

int FileOperations::remove(const char *path) { return ::unlink(path); }

FileOperations &FileOperations::system() {
    static FileOperations operations;
    return operations;
}

bool writeAll(FileOperations &operations, int fd, const void *data, std::size_t size) {
    const auto *next = static_cast<const char *>(data);
    while (size > 0) {
        const ssize_t written = operations.write(fd, next, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written == 0)
            errno = ENOSPC; // A disk that takes nothing and gives no reason.
        if (written <= 0)
            return false;
        next += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}
