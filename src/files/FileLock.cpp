// SPDX-License-Identifier: MIT
#include "files/FileLock.h"

#include "base/RunTimeError.h"
#include "files/PlainFile.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>

namespace ostrel {

FileLock::FileLock(const QString &path) : path_(path) {
    const OpenedFile opened = openPlainFile(path, O_RDWR | O_CREAT, 0600);
    if (opened.error)
        throw RunTimeError::from(opened.error, path);
    file_.reset(opened.fd);
}

bool FileLock::tryExclusive() {
    if (::flock(file_.get(), LOCK_EX | LOCK_NB) == 0)
        return true;
    if (errno != EWOULDBLOCK)
        throw RunTimeError::fromErrno(errno, path_);
    return false;
}

bool FileLock::exclusiveWithin(std::chrono::milliseconds time) {
    using std::chrono::steady_clock;
    const auto end = steady_clock::now() + time;
    while (!tryExclusive()) {
        if (steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

void FileLock::exclusive() { wait(LOCK_EX); }

void FileLock::shared() { wait(LOCK_SH); }

void FileLock::wait(int operation) {
    while (::flock(file_.get(), operation) != 0) {
        if (errno != EINTR)
            throw RunTimeError::fromErrno(errno, path_);
    }
}

} // namespace ostrel
