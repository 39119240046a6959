// SPDX-License-Identifier: MIT
#include "platform/Directories.h"

#include "base/RunTimeError.h"
#include "files/DurableFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

fs::path native(const QString &path) { return QFile::encodeName(path).toStdString(); }

void flushFolderOf(const QString &path) {
    const QString folder = QFileInfo(path).path();
    if (!syncFolder(FileOperations::system(), QFile::encodeName(folder).constData()))
        throw RunTimeError::fromErrno(errno, folder);
}

template <typename Wanted>
QStringList namesWhere(const QString &folder, Wanted &&wanted) {
    QStringList found;
    if (!Directories::exists(folder))
        return found;
    std::error_code error;
    for (fs::directory_iterator entry(native(folder), error), end; !error && entry != end; entry.increment(error)) {
        if (wanted(*entry))
            found << QFile::decodeName(QByteArray::fromStdString(entry->path().filename().string()));
    }
    if (error)
        throw RunTimeError::fromErrno(error.value(), folder);
    found.sort();
    return found;
}

fs::file_type typeOf(const fs::directory_entry &entry) {
    std::error_code unknown;
    return entry.symlink_status(unknown).type();
}

fs::file_type typeOf(const QString &path) {
    std::error_code unknown;
    return fs::symlink_status(native(path), unknown).type();
}

} // namespace

bool Directories::exists(const QString &path) { return typeOf(path) == fs::file_type::directory; }

bool Directories::isLink(const QString &path) { return typeOf(path) == fs::file_type::symlink; }

bool Directories::make(const QString &path) {
    if (makePrivateFolder(FileOperations::system(), QFile::encodeName(path).constData()) != 0) {
        if (errno == EEXIST)
            return false;
        throw RunTimeError::fromErrno(errno, path);
    }
    flushFolderOf(path);
    return true;
}

void Directories::hide(const QString &path) {
    const QFileInfo folder(path);
    const QString list = folder.path() + QStringLiteral("/.hidden");
    QByteArray hidden;
    if (const std::error_code error = readPlainFile(list, hidden);
        error && error != std::errc::no_such_file_or_directory)
        throw RunTimeError::from(error, list);
    const QByteArray name = QFile::encodeName(folder.fileName());
    if (hidden.split('\n').contains(name))
        return;
    if (!hidden.isEmpty() && !hidden.endsWith('\n'))
        hidden += '\n';
    if (const std::error_code error = replaceFile(list, hidden + name + '\n', FileOperations::system(), Links::Refuse))
        throw RunTimeError::from(error, list);
}

QStringList Directories::names(const QString &folder) {
    return namesWhere(folder, [](const fs::directory_entry &) { return true; });
}

QStringList Directories::folderNames(const QString &folder) {
    return namesWhere(folder,
                      [](const fs::directory_entry &entry) { return typeOf(entry) == fs::file_type::directory; });
}

void Directories::removeFile(const QString &path) {
    if (FileOperations::system().remove(QFile::encodeName(path).constData()) != 0)
        throw RunTimeError::fromErrno(errno, path);
}

void Directories::remove(const QString &folder) {
    if (FileOperations::system().removeFolder(QFile::encodeName(folder).constData()) != 0)
        throw RunTimeError::fromErrno(errno, folder);
    flushFolderOf(folder);
}
