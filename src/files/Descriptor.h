// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <utility>

namespace ostrel {

/// An open file of the operating system, closed with its owner. -1 for none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(Descriptor &&other) noexcept : fd_(other.release()) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        reset(other.release());
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { reset(); }

    explicit operator bool() const { return fd_ >= 0; }
    int get() const { return fd_; }
    int release() { return std::exchange(fd_, -1); }
    void reset(int fd = -1) {
        if (const int old = std::exchange(fd_, fd); old >= 0)
            ::close(old);
    }

private:
    int fd_ = -1;
};

} // namespace ostrel
