// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <system_error>
#include <vector>

namespace ostrel {

/// A file that takes piece after piece, each safe on the disk once flush() has said so: one write, one flush.
///
/// Zeros are laid out ahead of what is written, 64 KiB at a time, since a file that grows makes every flush take the
/// file system's own books along. So a reader finds zeros behind the last piece, and after a power cut possibly part of
/// a piece: it has to know a piece by its own marks.
///
/// After a failure the file is closed and not to be trusted for more; what was flushed before is in it. A file that
/// has never flushed anything is removed. Errors are those of the operating system (errno).
class AppendFile {
public:
    static constexpr std::size_t layout = 64 * 1024;

    explicit AppendFile(FileOperations &operations = FileOperations::system()) : operations_(operations) {}
    ~AppendFile() { close(); }
    AppendFile(const AppendFile &) = delete;
    AppendFile &operator=(const AppendFile &) = delete;

    /// Makes a new file, never takes one that is there (EEXIST). The one before is closed.
    std::error_code create(const QString &path);
    bool isOpen() const { return fd_ >= 0; }
    /// Of what was flushed, without the zeros.
    std::size_t length() const { return length_; }
    /// The file is open, and still what its path leads to, in its full length.
    bool stands() const;
    void close();

    /// Gathers what the next flush() writes.
    void add(const void *data, std::size_t size);
    /// No error means: all that was ever added is on the disk.
    std::error_code flush();

private:
    std::error_code failWith(int error);

    FileOperations &operations_;
    QByteArray path_;
    int fd_ = -1;
    std::size_t length_ = 0;
    std::size_t laidOut_ = 0; ///< with them
    std::vector<char> gathered_;
};

} // namespace ostrel
