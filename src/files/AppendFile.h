// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <system_error>
#include <vector>

namespace ostrel {

/// A file to which pieces are appended. After a flush() without an error they are on the disk: one write, one flush.
///
/// Zeros are written ahead of the data, 64 KiB at a time: while a file grows, every flush must also write the file
/// system's metadata. So a reader finds zeros behind the last piece, and after a power cut possibly an incomplete
/// piece. It must recognise a piece by the piece's own header.
///
/// A failure closes the file; the data that was flushed before is in it. A file without any flushed data is removed.
/// Errors are those of the operating system (errno).
class AppendFile {
public:
    static constexpr std::size_t layout = 64 * 1024;

    explicit AppendFile(FileOperations &operations = FileOperations::system()) : operations_(operations) {}
    ~AppendFile() { close(); }
    AppendFile(const AppendFile &) = delete;
    AppendFile &operator=(const AppendFile &) = delete;

    /// Makes a new file; an existing one is refused (EEXIST). Closes the file that was open before.
    std::error_code create(const QString &path);
    bool isOpen() const { return fd_ >= 0; }
    /// Bytes flushed, without the zeros.
    std::size_t length() const { return length_; }
    /// The file is open, its path still leads to it, and it has not become shorter.
    bool isInPlace() const;
    void close();

    /// Adds data that the next flush() writes.
    void add(const void *data, std::size_t size);
    /// Without an error everything that was added is on the disk.
    std::error_code flush();

private:
    std::error_code failWith(int error);

    FileOperations &operations_;
    QByteArray path_;
    int fd_ = -1;
    std::size_t length_ = 0;
    std::size_t laidOut_ = 0; ///< length with the zeros
    std::vector<char> gathered_;
};

} // namespace ostrel
