// SPDX-License-Identifier: MIT
#include "files/AppendFile.h"

#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <tuple>
#include <utility>

namespace ostrel {

namespace {

constexpr mode_t newFileMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;

/// Ends at the first failure, with errno; returns the number of bytes written.
std::size_t writeUpToFailure(FileOperations &operations, int fd, const std::vector<char> &data, std::size_t position) {
    std::size_t done = 0;
    while (done < data.size()) {
        const ssize_t written =
            operations.writeAt(fd, data.data() + done, data.size() - done, static_cast<off_t>(position + done));
        if (written < 0 && errno == EINTR)
            continue;
        if (written == 0)
            errno = ENOSPC; // A write of 0 bytes sets no errno.
        if (written <= 0)
            break;
        done += static_cast<std::size_t>(written);
    }
    return done;
}

struct Entry : statx {
    auto identity() const { return std::tuple(stx_dev_major, stx_dev_minor, stx_ino); }
};

/// An empty path means the open file `fd`. The times are not queried: after a query of the times the next flush would
/// have to write the inode too.
std::optional<Entry> entryOf(int fd, const char *path) {
    Entry entry{};
    if (::statx(fd, path, AT_EMPTY_PATH, STATX_INO | STATX_SIZE, &entry) != 0)
        return std::nullopt;
    return entry;
}

} // namespace

std::error_code AppendFile::create(const QString &path) {
    close();
    path_ = QFile::encodeName(path);
    fd_ = operations_.open(path_.constData(), O_WRONLY | O_CREAT | O_EXCL, newFileMode);
    if (fd_ < 0)
        return {errno, std::generic_category()};
    const QByteArray folder = path_.left(path_.lastIndexOf('/') + 1);
    if (!syncFolder(operations_, folder.isEmpty() ? "." : folder.constData()))
        return failWith(errno);
    return {};
}

bool AppendFile::isInPlace() const {
    const std::optional<Entry> open = entryOf(fd_, "");
    const std::optional<Entry> named = entryOf(AT_FDCWD, path_.constData());
    return isOpen() && open && named && open->identity() == named->identity() && named->stx_size >= laidOut_;
}

void AppendFile::close() {
    if (fd_ >= 0)
        operations_.close(fd_); // everything that counts was flushed
    fd_ = -1;
    length_ = laidOut_ = 0;
    gathered_ = {};
}

void AppendFile::add(const void *data, std::size_t size) {
    const auto *bytes = static_cast<const char *>(data);
    gathered_.insert(gathered_.end(), bytes, bytes + size);
}

std::error_code AppendFile::flush() {
    if (!isOpen())
        return std::make_error_code(std::errc::bad_file_descriptor);
    std::vector<char> data = std::exchange(gathered_, {});
    const std::size_t end = length_ + data.size();
    if (end > laidOut_)
        data.resize((end + layout - 1) / layout * layout - length_);
    const std::size_t reached = length_ + writeUpToFailure(operations_, fd_, data, length_);
    // It does not matter when a full disk took only part of the zeros.
    if (reached < end || operations_.syncData(fd_) != 0)
        return failWith(errno);
    length_ = end;
    laidOut_ = std::max(laidOut_, reached);
    return {};
}

std::error_code AppendFile::failWith(int error) {
    if (length_ == 0)
        operations_.remove(path_.constData());
    close();
    return {error, std::generic_category()};
}

} // namespace ostrel
