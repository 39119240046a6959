// SPDX-License-Identifier: MIT
#include "chart/files/RecordFile.h"

#include "chart/files/Crc32.h"
#include "files/PlainFile.h"

#include <QDateTime>
#include <QFile>
#include <QRandomGenerator>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>

namespace ostrel {

static_assert(std::endian::native == std::endian::little, "files hold numbers as they lie in memory");

namespace {

// A transfer as text changes the first byte or the line ends, and so is detected at once.
constexpr char magic[8] = {'\x89', 'O', 'S', 'T', 'R', '\r', '\n', '\x1a'};
constexpr std::size_t checkedHead = 44; // bytes of the file header; their checksum follows
constexpr std::size_t bufferSize = 1 << 15;
constexpr std::size_t large = 1 << 13; // bytes; less goes through the buffer
constexpr std::size_t ahead = 1 << 8;  // bytes fetched behind a large piece: they hold the next record's header
constexpr quint64 mostZeros = 1 << 24; // bytes; no writer preallocates more, and a hole in the file can be very long
constexpr char zeros[8] = {};
constexpr quint64 blockSize = 512; // bytes; the unit of st_blocks

/// Write values one after the other, and read them back.
template <typename... T>
void putAll(char *to, const T &...values) {
    ((std::memcpy(to, &values, sizeof values), to += sizeof values), ...);
}
template <typename... T>
void get(const char *from, T &...values) {
    ((std::memcpy(&values, from, sizeof values), from += sizeof values), ...);
}

/// Four capital letters or blanks. A search tests this first, so that it computes few checksums.
bool isKind(quint32 kind) {
    for (int i = 0; i < 4; ++i, kind >>= 8) {
        const auto letter = static_cast<unsigned char>(kind);
        if (letter != ' ' && (letter < 'A' || letter > 'Z'))
            return false;
    }
    return true;
}

quint32 headSum(const char *bytes, quint64 identity) {
    char checked[sizeof identity + RecordHead::size - sizeof(quint32)]; // one call: there are many small records
    std::memcpy(checked, &identity, sizeof identity);
    std::memcpy(checked + sizeof identity, bytes, sizeof checked - sizeof identity);
    return crc32Of(0, checked, sizeof checked);
}

/// The identity enters the checksum of a record's header first. So the checksum, taken back over the bytes of the
/// header, shows what the identity must have led to: an identity that leads to the same.
quint64 identityBehind(const char (&bytes)[RecordHead::size]) {
    constexpr quint32 polynomial = 0xedb88320;
    quint32 state = 0;
    get(bytes + sizeof bytes - sizeof state, state);
    state = ~state;
    constexpr int identityBytes = 8;
    for (int i = static_cast<int>(sizeof bytes - sizeof state) - 1; i >= -identityBytes; --i) {
        for (int bit = 0; bit < 8; ++bit)
            state = (state >> 31) != 0 ? (state ^ polynomial) << 1 | 1 : state << 1;
        if (i >= 0)
            state ^= static_cast<unsigned char>(bytes[i]);
    }
    return static_cast<quint32>(~state);
}

} // namespace

QByteArray FileHead::bytes() const {
    QByteArray bytes(size, '\0');
    std::memcpy(bytes.data(), magic, sizeof magic);
    putAll(bytes.data() + sizeof magic, kind, version, identity, written, sequence, instance);
    putAll(bytes.data() + checkedHead, crc32Of(0, bytes.constData(), checkedHead));
    return bytes;
}

std::optional<FileHead> FileHead::from(std::span<const char, size> bytes) {
    quint32 sum = 0;
    get(bytes.data() + checkedHead, sum);
    if (std::memcmp(bytes.data(), magic, sizeof magic) != 0 || sum != crc32Of(0, bytes.data(), checkedHead))
        return std::nullopt;
    return unchecked(bytes);
}

std::optional<FileHead> FileHead::mended(std::span<const char, size> bytes) {
    char tried[size];
    std::copy(bytes.begin(), bytes.end(), tried);
    for (char &byte : tried) {
        const char found = byte;
        do {
            ++byte;
            if (const std::optional<FileHead> head = from(tried))
                return head;
        } while (byte != found);
    }
    return std::nullopt;
}

FileHead FileHead::unchecked(std::span<const char, size> bytes) {
    FileHead head;
    get(bytes.data() + sizeof magic, head.kind, head.version, head.identity, head.written, head.sequence,
        head.instance);
    return head;
}

FileHead FileHead::of(quint32 kind, quint32 version) {
    return {.kind = kind,
            .version = version,
            .identity = QRandomGenerator::system()->generate64(),
            .written = QDateTime::currentMSecsSinceEpoch()};
}

void RecordHead::put(char (&bytes)[size], quint64 identity) const {
    putAll(bytes, kind, number, length, payloadSum);
    putAll(bytes + size - sizeof(quint32), headSum(bytes, identity));
}

std::optional<RecordHead> RecordHead::from(std::span<const char, size> bytes, quint64 identity) {
    RecordHead head;
    quint32 sum = 0;
    get(bytes.data(), head.kind, head.number, head.length, head.payloadSum, sum);
    if (sum != headSum(bytes.data(), identity))
        return std::nullopt;
    return head;
}

RecordPieces &RecordPieces::add(const void *data, std::size_t size) {
    pieces_.emplace_back(static_cast<const char *>(data), size);
    sum_ = crc32Of(sum_, data, size);
    length_ += size;
    return *this;
}

RecordPieces &RecordPieces::add(const QByteArray &bytes) {
    kept_.push_back(bytes);
    return add(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

const std::vector<std::span<const char>> &RecordPieces::seal(quint64 identity, quint32 number) {
    RecordHead{.kind = kind_, .number = number, .length = length_, .payloadSum = sum_}.put(head_, identity);
    if (const std::size_t gap = filledUp(length_) - length_; gap > 0)
        pieces_.emplace_back(zeros, gap);
    return pieces_;
}

RecordReader::RecordReader(const QString &path, FileOperations &operations) : operations_(operations) {
    error_ = open(path);
    buffer_.resize(std::min<quint64>(bufferSize, size_));
    char bytes[FileHead::size];
    if (size_ >= sizeof bytes && read(bytes, sizeof bytes, 0))
        head_ = FileHead::from(bytes);
    recordEnd_ = taken_ = FileHead::size;
}

std::error_code RecordReader::open(const QString &path) {
    // O_NONBLOCK: opening a named pipe must not wait for a writer.
    fd_ = operations_.open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK, 0);
    struct stat file {};
    if (fd_ < 0 || ::fstat(fd_, &file) != 0)
        return {errno, std::generic_category()};
    if (!S_ISREG(file.st_mode))
        return notPlainError(file.st_mode);
    size_ = static_cast<quint64>(file.st_size);
    filled_ = std::min(size_, static_cast<quint64>(file.st_blocks) * blockSize);
    return {};
}

RecordReader::~RecordReader() {
    if (fd_ >= 0)
        operations_.close(fd_); // nothing was written
}

QByteArray RecordReader::beginning(std::size_t size) {
    QByteArray bytes(static_cast<qsizetype>(std::min<quint64>(size, size_)), Qt::Uninitialized);
    return read(bytes.data(), static_cast<std::size_t>(bytes.size()), 0) ? bytes : QByteArray();
}

bool RecordReader::isBlankAt(quint64 position) {
    char bytes[RecordHead::size];
    return position + sizeof bytes <= size_ && read(bytes, sizeof bytes, position) &&
           std::all_of(bytes, bytes + sizeof bytes, [](char byte) { return byte == 0; });
}

bool RecordReader::presumeFromRecords() {
    constexpr quint64 searched = 1 << 20; // bytes
    char bytes[RecordHead::size];
    for (quint64 position = FileHead::size; position < searched; position += 8) {
        if (position + sizeof bytes > size_ || !read(bytes, sizeof bytes, position))
            return false;
        quint32 kind = 0;
        get(bytes, kind);
        const quint64 identity = isKind(kind) ? identityBehind(bytes) : 0;
        const std::optional<RecordHead> record = RecordHead::from(bytes, identity);
        if (!record || record->length > size_ - position)
            continue;
        const quint64 next = position + sizeof bytes + filledUp(record->length);
        if (next + sizeof bytes <= size_ && read(bytes, sizeof bytes, next) && RecordHead::from(bytes, identity)) {
            head_ = FileHead{.identity = identity};
            return true;
        }
    }
    return false;
}

RecordReader::Found RecordReader::next() {
    if (!head_)
        return Found::Damage;
    const quint64 position = nextPosition();
    if (position == size_)
        return Found::End;
    if (enter(position))
        return Found::Record;
    return position < size_ && onlyZerosFrom(position) ? Found::End : Found::Damage;
}

bool RecordReader::searchNext() {
    if (!head_)
        return false;
    // A record may begin at any multiple of eight bytes.
    for (quint64 position = filledUp(recordEnd_); !gaveUp(); position += 8) {
        if (position % bufferSize == 0)
            position = filledUp(behindHole(position));
        quint32 kind = 0;
        if (position + RecordHead::size > size_ || !read(&kind, sizeof kind, position))
            return false;
        if (isKind(kind) && enter(position))
            return true;
        searchable_ -= std::min<quint64>(searchable_, 8);
    }
    return false;
}

/// The position of the next data at or behind `position`. Holes are skipped without being read.
quint64 RecordReader::behindHole(quint64 position) {
    const off_t data = operations_.dataFrom(fd_, static_cast<off_t>(position));
    if (data >= 0)
        return static_cast<quint64>(data);
    return errno == ENXIO ? size_ : position;
}

/// Makes the record at `position` the present one. False when its header is not intact or the file ends within it.
bool RecordReader::enter(quint64 position) {
    char bytes[RecordHead::size];
    cutOff_ = position > size_ || size_ - position < sizeof bytes;
    if (cutOff_ || !read(bytes, sizeof bytes, position))
        return false;
    const std::optional<RecordHead> found = RecordHead::from(bytes, head_->identity);
    cutOff_ = found && found->length > size_ - position - sizeof bytes;
    if (!found || cutOff_)
        return false;
    record_ = *found;
    recordPosition_ = position;
    taken_ = position + sizeof bytes;
    recordEnd_ = taken_ + record_.length;
    sum_ = 0;
    return true;
}

bool RecordReader::take(void *to, std::size_t size) {
    if (size > left() || !read(to, size, taken_))
        return false;
    sum_ = crc32Of(sum_, to, size);
    taken_ += size;
    return true;
}

bool RecordReader::take(QByteArray &to) {
    to.resize(static_cast<qsizetype>(left()));
    return take(to.data(), static_cast<std::size_t>(to.size()));
}

bool RecordReader::finish() {
    char rest[4096];
    while (left() > 0) {
        if (!take(rest, std::min<quint64>(left(), sizeof rest)))
            return false;
    }
    const quint64 gap = filledUp(recordEnd_) - recordEnd_;
    padded_ = recordEnd_ + gap <= size_ && read(rest, gap, recordEnd_) && std::memcmp(rest, zeros, gap) == 0;
    return sum_ == record_.payloadSum && (padded_ || ignoresPadding_);
}

/// Reads large pieces directly into the caller's memory, small ones through the buffer.
bool RecordReader::read(void *to, std::size_t size, quint64 position) {
    auto *next = static_cast<char *>(to);
    while (size > 0) {
        std::size_t count = 0;
        if (position >= bufferPosition_ && position < bufferPosition_ + buffered_) {
            const std::size_t from = position - bufferPosition_;
            count = std::min(size, buffered_ - from);
            std::memcpy(next, buffer_.data() + from, count);
        } else if (size >= large) {
            if (!fetch(next, size, position, ahead))
                return false;
            count = size;
        } else if (fetch(nullptr, 0, position, buffer_.size())) {
            continue;
        } else {
            return false;
        }
        next += count;
        position += count;
        size -= count;
    }
    return true;
}

/// Reads `size` bytes at `position` into `to`, and up to `further` of the bytes behind them into the buffer.
bool RecordReader::fetch(char *to, std::size_t size, quint64 position, std::size_t further) {
    bufferPosition_ = position + size;
    buffered_ = 0;
    do {
        const iovec pieces[] = {{to, size}, {buffer_.data(), std::min(further, buffer_.size())}};
        const ssize_t got = operations_.readAt(fd_, pieces, 2, static_cast<off_t>(position));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) { // 0: the file has become shorter, which counts as EIO
            error_ = {got < 0 ? errno : EIO, std::generic_category()};
            return false;
        }
        const std::size_t wanted = std::min(size, static_cast<std::size_t>(got));
        buffered_ = static_cast<std::size_t>(got) - wanted;
        to += wanted;
        position += wanted;
        size -= wanted;
    } while (size > 0);
    return true;
}

bool RecordReader::onlyZerosFrom(quint64 position) {
    if (size_ - position > mostZeros)
        return false;
    char bytes[4096];
    while (position < size_) {
        const std::size_t size = std::min<quint64>(sizeof bytes, size_ - position);
        if (!read(bytes, size, position) || std::any_of(bytes, bytes + size, [](char byte) { return byte != 0; }))
            return false;
        position += size;
    }
    return true;
}

} // namespace ostrel
