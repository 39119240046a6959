// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>
#include <sys/types.h>
#include <unistd.h>

#include <utility>

namespace ostrel {

/// An open file of the operating system, closed with its owner. -1 for none.
class SystemFile {
public:
    explicit SystemFile(int number = -1) : number_(number) {}
    SystemFile(SystemFile &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
    SystemFile &operator=(SystemFile &&other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~SystemFile() {
        if (number_ >= 0)
            ::close(number_);
    }

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }

private:
    int number_;
};

/// Identifies a file independently of its names.
struct FileIdentity {
    dev_t device;
    ino_t inode;
    bool operator==(const FileIdentity &) const = default;
};

/// The longest wait for the reader of a pipe, in ms.
constexpr int readerPatience = 5000;

/// Writes all bytes to a file, pipe or terminal; `name` is its name in messages. Raises a run-time error when that
/// fails or when a reader takes nothing for readerPatience.
void writeAll(int file, QByteArrayView bytes, const QString &name);

} // namespace ostrel
