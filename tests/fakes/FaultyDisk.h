// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <cerrno>

/// A disk whose n-th operation fails, and that forgets half of the write that fails.
class FaultyDisk : public FileOperations {
public:
    explicit FaultyDisk(int failing = 0, int error = ENOSPC) : failing_(failing), error_(error) {}

    int open(const char *path, int flags, mode_t mode) override {
        return fails() ? -1 : FileOperations::open(path, flags, mode);
    }
    ssize_t write(int fd, const void *data, std::size_t size) override {
        if (!fails())
            return FileOperations::write(fd, data, size);
        FileOperations::write(fd, data, size / 2);
        errno = error_;
        return -1;
    }
    int chmod(int fd, mode_t mode) override { return fails() ? -1 : FileOperations::chmod(fd, mode); }
    int sync(int fd) override { return fails() ? -1 : FileOperations::sync(fd); }
    int close(int fd) override {
        FileOperations::close(fd); // the operating system gives the number free in any case
        return fails() ? -1 : 0;
    }
    int rename(const char *from, const char *to) override { return fails() ? -1 : FileOperations::rename(from, to); }
    int remove(const char *path) override { return FileOperations::remove(path); }

    /// The n-th operation was reached.
    bool struck() const { return count_ >= failing_; }

private:
    bool fails() {
        errno = error_;
        return ++count_ == failing_;
    }

    int failing_;
    int error_;
    int count_ = 0;
};
