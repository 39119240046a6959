// SPDX-License-Identifier: MIT
#include "files/PlainFile.h"

#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace ostrel {

namespace {

constexpr qsizetype mostContent = 1 << 24;

struct Kind {
    mode_t mode;
    int error;
    const char *words;
};

// clang-format off
constexpr Kind kinds[] = {
    {S_IFDIR,  EISDIR,   "is a folder"},
    {S_IFIFO,  ESPIPE,   "is a named pipe"},
    {S_IFLNK,  ELOOP,    "is a symbolic link"},
    {S_IFCHR,  ENODEV,   "is a device"},
    {S_IFBLK,  ENODEV,   "is a device"},
    {S_IFSOCK, ENOTSUP,  "is a socket"},
};
// clang-format on

class NotPlain : public std::error_category {
public:
    const char *name() const noexcept override { return "not a plain file"; }
    std::string message(int error) const override {
        for (const Kind &kind : kinds) {
            if (kind.error == error)
                return kind.words;
        }
        return "is no plain file";
    }
    std::error_condition default_error_condition(int error) const noexcept override {
        return {error, std::generic_category()};
    }
};

std::error_code systemError() { return {errno, std::generic_category()}; }

std::error_code readAll(FileOperations &operations, int fd, QByteArray &all) {
    char bytes[4096];
    const iovec piece{bytes, sizeof bytes};
    while (const ssize_t count = operations.readAt(fd, &piece, 1, all.size())) {
        if (count < 0 && errno != EINTR)
            return systemError();
        all.append(bytes, std::max<ssize_t>(0, count));
        if (all.size() > mostContent)
            return std::make_error_code(std::errc::file_too_large);
    }
    return {};
}

} // namespace

std::error_code notPlainError(mode_t mode) {
    static const NotPlain category;
    for (const Kind &kind : kinds) {
        if (kind.mode == (mode & S_IFMT))
            return {kind.error, category};
    }
    return {EINVAL, category};
}

OpenedFile openPlainFile(const QString &path, int flags, mode_t mode, FileOperations &operations) {
    const QByteArray name = QFile::encodeName(path);
    struct stat there {};
    // The type is checked before opening, since opening a device can already have an effect.
    if (::lstat(name.constData(), &there) == 0 && !S_ISREG(there.st_mode))
        return {-1, notPlainError(there.st_mode)};
    const int fd = operations.open(name.constData(), flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, mode);
    if (fd < 0)
        return {-1, systemError()};
    if (::fstat(fd, &there) == 0 && S_ISREG(there.st_mode))
        return {fd, {}};
    operations.close(fd);
    return {-1, notPlainError(there.st_mode)};
}

std::error_code readPlainFile(const QString &path, QByteArray &content, FileOperations &operations) {
    const OpenedFile opened = openPlainFile(path, O_RDONLY, 0, operations);
    if (opened.error)
        return opened.error;
    QByteArray all;
    const std::error_code error = readAll(operations, opened.fd, all);
    operations.close(opened.fd);
    if (!error)
        content = all;
    return error;
}

} // namespace ostrel
