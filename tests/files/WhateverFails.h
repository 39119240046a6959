// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FaultyDisk.h"

#include <gtest/gtest.h>

#include <cerrno>

/// A disk that nothing is read from any more since its n-th operation. Who only reads a file does not mind how its
/// closing ends.
struct DyingDisk : FaultyDisk {
    using FaultyDisk::FaultyDisk;
    ssize_t readAt(int fd, const iovec *pieces, int count, off_t position) override {
        const ssize_t got = FaultyDisk::readAt(fd, pieces, count, position);
        errno = EIO;
        return struck() ? -1 : got;
    }
    int close(int fd) override { return FileOperations::close(fd); }
};

/// Tries `body` with a disk whose first operation fails, then with one whose second does, until none fails any more.
template <typename Disk = FaultyDisk, typename Body>
void whateverFails(Body body, std::size_t mostAtOnce = 1 << 30) {
    for (int failing = 1, struck = true; struck != 0; ++failing) {
        SCOPED_TRACE(failing);
        Disk disk(failing, EIO, mostAtOnce);
        body(disk);
        struck = disk.struck();
    }
}
