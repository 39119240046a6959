// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <vector>

using namespace ostrel;

/// A disk whose n-th operation fails, and that forgets half of the write that fails. Each read and
/// each write takes `most` bytes at most.
class FaultyDisk : public FileOperations {
public:
    explicit FaultyDisk(int failing = 0, int error = ENOSPC, std::size_t most = std::numeric_limits<std::size_t>::max())
        : failing_(failing), error_(error), most_(most) {}

    int open(const char *path, int flags, mode_t mode) override {
        return fails() ? -1 : FileOperations::open(path, flags, mode);
    }
    ssize_t readAt(int fd, const iovec *pieces, int count, off_t position) override {
        std::vector<iovec> taken(pieces, pieces + count);
        std::size_t room = most_;
        for (iovec &piece : taken)
            room -= piece.iov_len = std::min(piece.iov_len, room);
        return fails() ? -1 : FileOperations::readAt(fd, taken.data(), count, position);
    }
    const dirent *nextEntry(DIR *folder) override {
        const bool failing = fails();
        errno = failing ? error_ : 0;
        return failing ? nullptr : FileOperations::nextEntry(folder);
    }
    ssize_t write(int fd, const void *data, std::size_t size) override {
        return written(size, [&](std::size_t part) { return FileOperations::write(fd, data, part); });
    }
    ssize_t writeAt(int fd, const void *data, std::size_t size, off_t position) override {
        return written(size, [&](std::size_t part) { return FileOperations::writeAt(fd, data, part, position); });
    }
    int chmod(int fd, mode_t mode) override { return fails() ? -1 : FileOperations::chmod(fd, mode); }
    int sync(int fd) override { return fails() ? -1 : FileOperations::sync(fd); }
    int syncData(int fd) override { return fails() ? -1 : FileOperations::syncData(fd); }
    int close(int fd) override {
        FileOperations::close(fd); // the operating system gives the number free in any case
        return fails() ? -1 : 0;
    }
    int link(const char *from, const char *to) override { return fails() ? -1 : FileOperations::link(from, to); }
    int rename(const char *from, const char *to) override { return fails() ? -1 : FileOperations::rename(from, to); }
    int remove(const char *path) override { return fails() ? -1 : FileOperations::remove(path); }
    int makeFolder(const char *path, mode_t mode) override {
        return fails() ? -1 : FileOperations::makeFolder(path, mode);
    }

    /// The n-th operation was reached.
    bool struck() const { return count_ >= failing_; }

private:
    bool fails() {
        errno = error_;
        return ++count_ == failing_;
    }
    ssize_t written(std::size_t size, const auto &write) {
        const bool failing = fails();
        const ssize_t done = write(std::min(size, most_) / (failing ? 2 : 1));
        errno = failing ? error_ : errno;
        return failing ? -1 : done;
    }

    int failing_;
    int error_;
    std::size_t most_;
    int count_ = 0;
};

/// The computer's own disk is full, and can still be read, as long as this is there.
struct FullForWriting : FileOperations {
    FullForWriting() { standIn(this); }
    ~FullForWriting() override { standIn(nullptr); }
    ssize_t write(int, const void *, std::size_t) override {
        errno = ENOSPC;
        return -1;
    }
};

/// The computer's own disk is full, as long as this is there.
struct FullDisk : FaultyDisk {
    FullDisk() : FaultyDisk(0, ENOSPC, 0) { standIn(this); }
    ~FullDisk() override { standIn(nullptr); }
};
