// SPDX-License-Identifier: MIT
#include "simulator/NamedFiles.h"

#include "base/RunTimeError.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>
#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>

namespace ostrel {

namespace {

constexpr qsizetype longestInput = 256 * 1024 * 1024; // weeks of stream

struct KindRow {
    mode_t kind;
    const char *refusal;
};

constexpr KindRow refusedKinds[] = {
    {S_IFDIR, "is a folder"},
    {S_IFBLK, "is a disk"},
    {S_IFSOCK, "is a socket"},
};

[[noreturn]] void refuse(const QString &path, const QString &why) {
    throw RunTimeError(ErrorNumber::PathFileAccess, path + ": " + why);
}

void refuseKind(const struct stat &found, const QString &path) {
    for (const KindRow &row : refusedKinds) {
        if ((found.st_mode & S_IFMT) == row.kind)
            refuse(path, QLatin1String(row.refusal));
    }
}

std::optional<FileIdentity> plainFile(const struct stat &found) {
    return S_ISREG(found.st_mode) ? std::optional{FileIdentity{found.st_dev, found.st_ino}} : std::nullopt;
}

std::optional<FileIdentity> identityOfName(const QString &path) {
    struct stat found {};
    if (::lstat(QFile::encodeName(path).constData(), &found) != 0)
        return std::nullopt;
    return FileIdentity{found.st_dev, found.st_ino};
}

bool isStandardStream(const struct stat &file, int stream) {
    struct stat standard {};
    return ::fstat(stream, &standard) == 0 && standard.st_dev == file.st_dev && standard.st_ino == file.st_ino;
}

QByteArray contentOf(const SystemFile &file, const QString &path) {
    QByteArray content;
    std::array<char, 65536> piece;
    ssize_t count = 0;
    while ((count = ::read(file.number(), piece.data(), piece.size())) > 0) {
        content.append(piece.data(), count);
        if (content.size() > longestInput)
            refuse(path, "is longer than 256 MiB");
    }
    if (count < 0)
        throw RunTimeError::fromErrno(errno, path);
    return content;
}

bool isClash(const NamedFile &one, const NamedFile &other) {
    if (one.identity && one.identity == other.identity)
        return true;
    const std::optional<FileIdentity> name = identityOfName(one.path);
    return (one.isLink || other.isLink) && name && name == identityOfName(other.path);
}

} // namespace

InputFile::InputFile(const QString &path) {
    const SystemFile file{::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC)};
    struct stat found {};
    if (!file || ::fstat(file.number(), &found) != 0)
        throw RunTimeError::fromErrno(errno, path);
    refuseKind(found, path);
    identity_ = plainFile(found);
    content_ = contentOf(file, path);
}

OutputFile::OutputFile(const QString &path) : path_(path) {
    struct stat found {};
    const bool stands = ::stat(QFile::encodeName(path).constData(), &found) == 0;
    made_ = !stands && !identityOfName(path); // a dangling link existed before
    if (stands)
        joinStandardStream(found);
    if (!along_)
        openApart(stands ? 0 : O_CREAT);
    if (::fstat(file_.number(), &found) == 0)
        identity_ = plainFile(found);
}

OutputFile::~OutputFile() {
    if (made_ && file_ && !begun_)
        QFile::remove(path_);
}

void OutputFile::joinStandardStream(const struct stat &found) {
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
        if (!along_ && isStandardStream(found, stream))
            file_ = SystemFile{::fcntl(stream, F_DUPFD_CLOEXEC, 0)};
        along_ = bool(file_);
    }
    if (!along_)
        refuseKind(found, path_);
}

/// Opens the file without emptying it, and waits only readerPatience for the reader of a pipe.
void OutputFile::openApart(int flags) {
    constexpr int careful = O_WRONLY | O_NOCTTY | O_CLOEXEC | O_NONBLOCK;
    const auto open = [&] {
        file_ = SystemFile{::open(QFile::encodeName(path_).constData(), careful | flags, 0666)};
        return bool(file_) || errno != ENXIO;
    };
    for (const QDeadlineTimer patience{readerPatience}; !open() && !patience.hasExpired();)
        QThread::msleep(20);
    if (!file_ && errno == ENXIO)
        refuse(path_, "is a pipe that nobody reads");
    if (!file_)
        throw RunTimeError::fromErrno(errno, path_);
    ::fcntl(file_.number(), F_SETFL, O_WRONLY);
}

void OutputFile::begin() {
    begun_ = true;
    if (identity_ && !along_ && ::ftruncate(file_.number(), 0) != 0)
        throw RunTimeError::fromErrno(errno, path_);
}

void OutputFile::write(const QByteArray &bytes) { writeAll(file_.number(), bytes, path_); }

QString clashOf(const std::vector<NamedFile> &files) {
    for (size_t later = 1; later < files.size(); ++later) {
        for (size_t earlier = 0; earlier < later; ++earlier) {
            if (isClash(files[later], files[earlier]))
                return QString{"%1 and %2 are the same file: %3"}.arg(files[later].purpose, files[earlier].purpose,
                                                                      files[later].path);
        }
    }
    return {};
}

} // namespace ostrel
