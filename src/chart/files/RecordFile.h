// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <system_error>
#include <vector>

namespace ostrel {

/// What all files of the chart are made of: a head that says what the file is, and checked records, all little-endian
/// and on boundaries of eight bytes. docs/file-format.md describes them byte by byte.

/// Four letters as they are in the file.
constexpr quint32 fourLetters(const char (&text)[5]) {
    quint32 value = 0;
    for (int i = 3; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(text[i]);
    return value;
}

struct FileHead {
    quint32 kind = 0;
    quint32 version = 0;
    quint64 identity = 0; ///< random; every record's checksum takes it in, so that none passes for another file's
    qint64 written = 0;   ///< milliseconds since 1970, UTC
    quint32 sequence = 0; ///< which file of a series, from 0
    qint32 instance = 0;  ///< of the program

    static constexpr std::size_t size = 48;
    QByteArray bytes() const;
    /// Nothing when the bytes are no such head, or a damaged one.
    static std::optional<FileHead> from(std::span<const char, size> bytes);
    /// The one that these bytes are but for one of them.
    static std::optional<FileHead> mended(std::span<const char, size> bytes);
    /// What the bytes say, damaged or not.
    static FileHead unchecked(std::span<const char, size> bytes);
    /// Made now, with a new identity.
    static FileHead of(quint32 kind, quint32 version);
};

struct RecordHead {
    quint32 kind = 0;
    quint32 number = 0; ///< of the record in its file, from 0
    quint64 length = 0; ///< of the payload, without the zeros that fill it up to eight bytes
    quint32 payloadSum = 0;

    static constexpr std::size_t size = 24;
    void put(char (&bytes)[size], quint64 identity) const;
    static std::optional<RecordHead> from(std::span<const char, size> bytes, quint64 identity);
};

constexpr quint64 filledUp(quint64 length) { return (length + 7) & ~quint64{7}; }

/// A record about to be written: its payload in pieces that stay where they are, or in bytes that it keeps.
class RecordPieces {
public:
    explicit RecordPieces(quint32 kind) : kind_(kind) {}
    RecordPieces(const RecordPieces &) = delete;
    RecordPieces &operator=(const RecordPieces &) = delete;

    RecordPieces &add(const void *data, std::size_t size);
    RecordPieces &add(const QByteArray &bytes);

    /// The whole record, piece after piece: head, payload, zeros. Good as long as this object and the payload are.
    const std::vector<std::span<const char>> &seal(quint64 identity, quint32 number);

private:
    quint32 kind_;
    char head_[RecordHead::size] = {};
    quint64 length_ = 0;
    quint32 sum_ = 0;
    std::vector<std::span<const char>> pieces_{{head_, sizeof head_}};
    std::vector<QByteArray> kept_;
};

/// Reads a file record by record, from front to back. Nothing in the file makes it hang, or allocate.
class RecordReader {
public:
    enum class Found {
        Record,
        End,   ///< of the file, or zeros from here to it
        Damage ///< something else than a whole head of a record, or a record that the file is too short for
    };

    explicit RecordReader(const QString &path, FileOperations &operations = FileOperations::system());
    ~RecordReader();
    RecordReader(const RecordReader &) = delete;
    RecordReader &operator=(const RecordReader &) = delete;

    /// That the file cannot be opened or read; the operating system's (errno).
    std::error_code error() const { return error_; }
    /// None when the file does not begin with a whole one.
    const std::optional<FileHead> &head() const { return head_; }
    /// Goes on as if the file began with this head: its records may be whole though its own is not.
    void presume(const FileHead &head) { head_ = head; }
    quint64 fileSize() const { return size_; }
    /// So much of it can hold anything at all: holes cannot.
    quint64 filledSize() const { return filled_; }
    /// What the file begins with, up to `size` bytes.
    QByteArray beginning(std::size_t size);
    /// The file holds zeros where the head of a record could begin: nothing was ever written there.
    bool isBlankAt(quint64 position);

    /// Goes to the next record; what is left of the present one is skipped.
    Found next();
    /// After a damage: goes to the next whole head of a record of this file, wherever it is. False when none comes,
    /// or not within the bytes that may be searched.
    bool searchNext();
    /// From now on only so many bytes are searched.
    void searchAtMost(quint64 bytes) { searchable_ = bytes; }
    /// A search has ended before the file did.
    bool gaveUp() const { return searchable_ == 0; }
    /// The damage is that the file ends too early for what begins here.
    bool cutOff() const { return cutOff_; }
    const RecordHead &record() const { return record_; }
    quint64 recordPosition() const { return recordPosition_; }
    /// Where the record behind this one should begin.
    quint64 nextPosition() const { return filledUp(recordEnd_); }

    /// What take() has not handed out yet of the present record.
    quint64 left() const { return recordEnd_ - taken_; }
    /// The next `size` bytes of the payload. False when it has not as many or the file cannot be read.
    bool take(void *to, std::size_t size);
    /// All of the payload that is left.
    bool take(QByteArray &to);
    /// To the end of the record. True when all of it is as it was written.
    bool finish();

private:
    std::error_code open(const QString &path);
    bool enter(quint64 position);
    quint64 behindHole(quint64 position);
    bool read(void *to, std::size_t size, quint64 position);
    bool fetch(char *to, std::size_t size, quint64 position, std::size_t further);
    bool onlyZerosFrom(quint64 position);

    FileOperations &operations_;
    int fd_ = -1;
    std::error_code error_;
    std::optional<FileHead> head_;
    quint64 size_ = 0;
    quint64 filled_ = 0;
    quint64 searchable_ = std::numeric_limits<quint64>::max();
    bool cutOff_ = false;
    RecordHead record_;
    quint64 recordPosition_ = 0;
    quint64 taken_ = 0;     ///< position in the file
    quint64 recordEnd_ = 0; ///< of the payload
    quint32 sum_ = 0;
    std::vector<char> buffer_;
    quint64 bufferPosition_ = 0;
    std::size_t buffered_ = 0;
};

} // namespace ostrel
