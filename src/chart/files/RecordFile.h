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

/// All files of the chart consist of a file header, which says what the file is, and of records with checksums. Numbers
/// are little-endian; header and records begin at multiples of eight bytes. docs/file-format.md describes every byte.

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
    quint64 identity = 0; ///< random; in the checksum of every record header, so that foreign records are rejected
    qint64 written = 0;   ///< milliseconds since 1970, UTC
    quint32 sequence = 0; ///< which file of a series, from 0
    qint32 instance = 0;  ///< number of the program's instance

    static constexpr std::size_t size = 48;
    QByteArray bytes() const;
    /// nullopt when the bytes are not a file header, or a damaged one.
    static std::optional<FileHead> from(std::span<const char, size> bytes);
    /// The same with up to one wrong byte corrected, so that the checksum agrees; nullopt when that is not possible.
    static std::optional<FileHead> mended(std::span<const char, size> bytes);
    /// The fields as they are in the bytes, without a check.
    static FileHead unchecked(std::span<const char, size> bytes);
    /// A new header with a random identity and the present time.
    static FileHead of(quint32 kind, quint32 version);
};

struct RecordHead {
    quint32 kind = 0;
    quint32 number = 0; ///< of the record in its file, from 0
    quint64 length = 0; ///< of the payload in bytes, without the zeros that pad it to a multiple of eight
    quint32 payloadSum = 0;

    static constexpr std::size_t size = 24;
    void put(char (&bytes)[size], quint64 identity) const;
    static std::optional<RecordHead> from(std::span<const char, size> bytes, quint64 identity);
};

constexpr quint64 filledUp(quint64 length) { return (length + 7) & ~quint64{7}; }

/// A record to be written. Its payload is made of pieces: memory that the caller keeps valid, or QByteArrays kept here.
class RecordPieces {
public:
    explicit RecordPieces(quint32 kind) : kind_(kind) {}
    RecordPieces(const RecordPieces &) = delete;
    RecordPieces &operator=(const RecordPieces &) = delete;

    RecordPieces &add(const void *data, std::size_t size);
    RecordPieces &add(const QByteArray &bytes);

    /// The whole record in pieces: header, payload, padding zeros. Valid as long as this object and the payload exist.
    const std::vector<std::span<const char>> &seal(quint64 identity, quint32 number);

private:
    quint32 kind_;
    char head_[RecordHead::size] = {};
    quint64 length_ = 0;
    quint32 sum_ = 0;
    std::vector<std::span<const char>> pieces_{{head_, sizeof head_}};
    std::vector<QByteArray> kept_;
};

/// Reads a file record by record. Damage cannot make it hang, or make take() allocate more than the file's size.
class RecordReader {
public:
    enum class Found {
        Record,
        End,   ///< end of the file, or only zeros (at most 16 MiB) up to it
        Damage ///< not an intact record header, or a record for which the file is too short
    };

    explicit RecordReader(const QString &path, FileOperations &operations = FileOperations::system());
    ~RecordReader();
    RecordReader(const RecordReader &) = delete;
    RecordReader &operator=(const RecordReader &) = delete;

    /// Set when the file cannot be opened or read; an errno.
    std::error_code error() const { return error_; }
    /// nullopt when the file does not begin with an intact header.
    const std::optional<FileHead> &head() const { return head_; }
    /// Reads on as if the file began with this header: records may be intact behind a damaged file header.
    void presume(const FileHead &head) { head_ = head; }
    /// The same when nothing of the header is left: finds out from two intact records in a row, within the first MiB,
    /// what the checksums of all records need to know. Kind and version of the header are then 0. False without such
    /// records.
    bool presumeFromRecords();
    quint64 fileSize() const { return size_; }
    /// Bytes that the file takes on the disk, at most its size: the holes of a sparse file hold no data.
    quint64 filledSize() const { return filled_; }
    /// The first `size` bytes, or all of a shorter file; empty when it cannot be read.
    QByteArray beginning(std::size_t size);
    /// There are zeros at `position`, as many as a record header has bytes: nothing was ever written there.
    bool isBlankAt(quint64 position);

    /// Goes back to the beginning of the first record.
    void rewind() { recordEnd_ = taken_ = FileHead::size; }
    /// Goes to the next record and skips the rest of the present one.
    Found next();
    /// After damage: searches all multiples of eight bytes for the next intact record header of this file. False when
    /// there is none, or none within the bytes that may be searched.
    bool searchNext();
    /// Limits all searches from now on, taken together, to this number of bytes.
    void searchAtMost(quint64 bytes) { searchable_ = bytes; }
    /// A search has used up these bytes before the end of the file.
    bool gaveUp() const { return searchable_ == 0; }
    /// The damage is that the file ends within the record, or the record header, that begins here.
    bool cutOff() const { return cutOff_; }
    const RecordHead &record() const { return record_; }
    quint64 recordPosition() const { return recordPosition_; }
    /// The position at which the next record should begin.
    quint64 nextPosition() const { return filledUp(recordEnd_); }

    /// Bytes of the present payload that take() has not read yet.
    quint64 left() const { return recordEnd_ - taken_; }
    /// Reads the next `size` bytes of the payload. False when fewer are left or the file cannot be read.
    bool take(void *to, std::size_t size);
    /// Reads the rest of the payload.
    bool take(QByteArray &to);
    /// Reads to the end of the record. True when the payload's checksum is right, and the padding zeros are, unless
    /// they do not matter.
    bool finish();
    void ignorePadding() { ignoresPadding_ = true; }
    /// The padding zeros of the record that was read last are right.
    bool padded() const { return padded_; }

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
    bool ignoresPadding_ = false;
    bool padded_ = true;
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
