// SPDX-License-Identifier: MIT
#include "files/FileOperations.h"

#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

namespace ostrel {

namespace {

FileOperations *standsIn = nullptr;

} // namespace

int FileOperations::open(const char *path, int flags, mode_t mode) { return ::open(path, flags | O_CLOEXEC, mode); }

ssize_t FileOperations::readAt(int fd, const iovec *pieces, int count, off_t position) {
    return ::preadv(fd, pieces, count, position);
}

const dirent *FileOperations::nextEntry(DIR *folder) { return ::readdir(folder); }

off_t FileOperations::dataFrom(int fd, off_t position) { return ::lseek(fd, position, SEEK_DATA); }

ssize_t FileOperations::write(int fd, const void *data, std::size_t size) { return ::write(fd, data, size); }

ssize_t FileOperations::writeAt(int fd, const void *data, std::size_t size, off_t position) {
    return ::pwrite(fd, data, size, position);
}

int FileOperations::chmod(int fd, mode_t mode) { return ::fchmod(fd, mode); }

int FileOperations::sync(int fd) { return ::fsync(fd); }

int FileOperations::syncData(int fd) { return ::fdatasync(fd); }

int FileOperations::close(int fd) { return ::close(fd); }

int FileOperations::rename(const char *from, const char *to) { return std::rename(from, to); }
int FileOperations::link(const char *from, const char *to) { return ::link(from, to); }

int FileOperations::remove(const char *path) { return ::unlink(path); }

int FileOperations::makeFolder(const char *path, mode_t mode) { return ::mkdir(path, mode); }

int FileOperations::removeFolder(const char *path) { return ::rmdir(path); }

FileOperations &FileOperations::system() {
    static FileOperations own;
    return standsIn != nullptr ? *standsIn : own;
}

void FileOperations::standIn(FileOperations *disk) { standsIn = disk; }

bool writeAll(FileOperations &operations, int fd, const void *data, std::size_t size) {
    const auto *next = static_cast<const char *>(data);
    while (size > 0) {
        const ssize_t written = operations.write(fd, next, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written == 0)
            errno = ENOSPC; // A write of 0 bytes sets no errno.
        if (written <= 0)
            return false;
        next += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool syncFolder(FileOperations &operations, const char *path) {
    const int folder = operations.open(path, O_RDONLY | O_DIRECTORY, 0);
    if (folder < 0)
        return false;
    // Some file systems cannot flush a folder and need not.
    const bool synced = operations.sync(folder) == 0 || errno == EINVAL;
    const int error = errno;
    operations.close(folder);
    errno = error;
    return synced;
}

std::error_code eachName(FileOperations &operations, const char *folder,
                         const std::function<bool(const char *)> &take) {
    const int fd = operations.open(folder, O_RDONLY | O_DIRECTORY, 0);
    if (fd < 0)
        return {errno, std::generic_category()};
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(::fdopendir(fd), &::closedir);
    if (!listing) {
        const int error = errno;
        ::close(fd);
        return {error, std::generic_category()};
    }
    for (;;) {
        errno = 0; // readdir does not change errno at the end of a folder
        const dirent *entry = operations.nextEntry(listing.get());
        if (entry == nullptr)
            return {errno, std::generic_category()};
        if (const std::string_view name = entry->d_name; name != "." && name != ".." && !take(entry->d_name))
            return {};
    }
}

std::error_code listFolder(FileOperations &operations, const QString &folder, QStringList &names) {
    const std::error_code error = eachName(operations, QFile::encodeName(folder).constData(), [&](const char *name) {
        names << QFile::decodeName(name);
        return true;
    });
    names.sort();
    return error;
}

int makePrivateFolder(FileOperations &operations, const char *path) {
    if (operations.makeFolder(path, S_IRWXU) != 0)
        return -1;
    struct stat made {};
    // A umask can remove the owner's permissions, too.
    const bool lacking = ::lstat(path, &made) == 0 && (made.st_mode & S_IRWXU) != S_IRWXU;
    return lacking ? ::chmod(path, S_IRWXU) : 0;
}

} // namespace ostrel
