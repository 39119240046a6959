// SPDX-License-Identifier: MIT
#include "files/Directories.h"

#include "base/RunTimeError.h"
#include "files/DurableFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <filesystem>

namespace ostrel {

namespace {

namespace fs = std::filesystem;

fs::path native(const QString &path) { return QFile::encodeName(path).toStdString(); }

void flushFolderOf(const QString &path) {
    const QString folder = QFileInfo(path).path();
    if (!syncFolder(FileOperations::system(), QFile::encodeName(folder).constData()))
        throw RunTimeError::fromErrno(errno, folder);
}

/// `none` when the path cannot be examined.
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

QStringList Directories::folderNames(const QString &folder) {
    QStringList names;
    const std::error_code error = isLink(folder) ? std::make_error_code(std::errc::not_a_directory)
                                                 : listFolder(FileOperations::system(), folder, names);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
        return {};
    if (error)
        throw RunTimeError::from(error, folder);
    names.removeIf([&](const QString &name) {
        const fs::file_type type = typeOf(folder + u'/' + name);
        return type != fs::file_type::directory && type != fs::file_type::none;
    });
    return names;
}

void Directories::remove(const QString &folder) {
    if (FileOperations::system().removeFolder(QFile::encodeName(folder).constData()) != 0)
        throw RunTimeError::fromErrno(errno, folder);
    flushFolderOf(folder);
}

} // namespace ostrel
