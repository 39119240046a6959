// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>

/// The calls of the operating system that put data on a disk, one for one: -1 and errno for a failure. A test stands in
/// for the disk here.
class FileOperations {
public:
    virtual ~FileOperations() = default;

    virtual int open(const char *path, int flags, mode_t mode);
    virtual ssize_t write(int fd, const void *data, std::size_t size);
    virtual int chmod(int fd, mode_t mode);
    virtual int sync(int fd);
    virtual int close(int fd);
    virtual int rename(const char *from, const char *to);
    virtual int remove(const char *path);

    static FileOperations &system();
};

/// Goes on after a short count or an interruption. False, with errno, when not all of it could be written.
bool writeAll(FileOperations &operations, int fd, const void *data, std::size_t size);
