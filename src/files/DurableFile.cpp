// SPDX-License-Identifier: MIT
#include "files/DurableFile.h"

#include "files/TemporaryFiles.h"

#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace ostrel {

namespace {

constexpr int longestLinkChain = 40;
constexpr mode_t allPermissions = 07777;

/// The target at the end of a chain of symbolic links; it need not exist.
QString behindLinks(const QString &path) {
    QString target = path;
    for (int hops = 0; hops < longestLinkChain && QFileInfo(target).isSymLink(); ++hops)
        target = QFileInfo(target).symLinkTarget();
    return target;
}

} // namespace

DurableFile::DurableFile(const QString &path, FileOperations &operations, Links links) : operations_(operations) {
    path_ = QFile::encodeName(links == Links::Follow ? behindLinks(path) : path);
    folder_ = path_.left(path_.lastIndexOf('/') + 1);
    if (folder_.isEmpty())
        folder_ = "./";
    if (replaceable())
        openTemporary();
}

DurableFile::~DurableFile() {
    if (!temporary_.isEmpty())
        failWith(ECANCELED);
}

bool DurableFile::replaceable() {
    struct stat old {};
    if (::lstat(path_.constData(), &old) != 0) {
        if (errno != ENOENT)
            failWith(errno);
    } else if (!S_ISREG(old.st_mode)) {
        failWith(notPlainError(old.st_mode));
    } else if (::access(path_.constData(), W_OK) != 0) {
        failWith(errno);
    } else {
        mode_ = static_cast<int>(old.st_mode & allPermissions);
    }
    return !error_;
}

void DurableFile::openTemporary() {
    const mode_t mode = mode_ >= 0 ? S_IRUSR | S_IWUSR : S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    TemporaryFiles::clearDead(folder_, operations_);
    temporary_ = folder_ + TemporaryFiles::newName();
    TemporaryFiles::begun(temporary_.constData());
    fd_ = operations_.open(temporary_.constData(), O_WRONLY | O_CREAT | O_EXCL, mode);
    if (fd_ < 0 || (mode_ >= 0 && operations_.chmod(fd_, static_cast<mode_t>(mode_)) != 0))
        failWith(errno);
}

bool DurableFile::write(QByteArrayView data) {
    if (!error_ && !writeAll(operations_, fd_, data.data(), static_cast<std::size_t>(data.size())))
        failWith(errno);
    return !error_;
}

std::error_code DurableFile::bringToDisk() {
    if (!error_ && fd_ >= 0 && operations_.sync(fd_) != 0)
        failWith(errno);
    if (!error_ && fd_ >= 0 && operations_.close(std::exchange(fd_, -1)) != 0)
        failWith(errno);
    return error_;
}

std::error_code DurableFile::commit() {
    if (!bringToDisk() && operations_.rename(temporary_.constData(), path_.constData()) != 0)
        failWith(errno);
    if (!error_)
        syncFolder();
    return error_;
}

/// Removes the temporary file, if there is one.
void DurableFile::failWith(std::error_code error) {
    error_ = error;
    if (const int fd = std::exchange(fd_, -1); fd >= 0)
        operations_.close(fd);
    if (temporary_.isEmpty())
        return;
    operations_.remove(temporary_.constData());
    TemporaryFiles::ended(temporary_.constData());
    temporary_.clear();
}

/// The new file already has its name; a failure here only means that a power cut may bring the old file back.
void DurableFile::syncFolder() {
    TemporaryFiles::ended(temporary_.constData());
    temporary_.clear();
    if (!ostrel::syncFolder(operations_, folder_.constData()))
        failWith(errno);
}

std::error_code replaceFile(const QString &path, QByteArrayView content, FileOperations &operations, Links links) {
    DurableFile file(path, operations, links);
    file.write(content);
    return file.commit();
}

} // namespace ostrel
