// SPDX-License-Identifier: MIT
#include "simulator/SystemFile.h"

#include "base/RunTimeError.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <climits>

namespace ostrel {

namespace {

void awaitReader(int file, const QString &name) {
    pollfd reader{file, POLLOUT, 0};
    if (::poll(&reader, 1, readerPatience) == 0)
        throw RunTimeError(ErrorNumber::PathFileAccess, name + ": nobody reads it");
}

} // namespace

void writeAll(int file, QByteArrayView bytes, const QString &name) {
    while (!bytes.isEmpty()) {
        awaitReader(file, name);
        // A pipe that is ready for writing takes PIPE_BUF bytes without waiting.
        const ssize_t count = ::write(file, bytes.data(), std::min<size_t>(size_t(bytes.size()), PIPE_BUF));
        if (count < 0 && errno != EINTR)
            throw RunTimeError::fromErrno(errno, name);
        bytes = bytes.sliced(std::max<ssize_t>(0, count));
    }
}

} // namespace ostrel
