// SPDX-License-Identifier: MIT
#include "desktop/Folders.h"

#include "base/AppFolders.h"
#include "base/RunTimeError.h"
#include "files/FileOperations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>

namespace ostrel {

Folders::Folders() : appPath_(AppFolders::app()) { makePath(appPath_); }

QString Folders::settingsFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/ostrel/Ostrel MS.ini");
}

QString Folders::sharedFolder() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/ostrel"));
}

void makePath(const QString &folder) {
    if (QFileInfo(folder).isDir())
        return;
    if (const QString above = QFileInfo(folder).path(); above != folder)
        makePath(above);
    const QByteArray name = QFile::encodeName(folder);
    const int error = makePrivateFolder(FileOperations::system(), name.constData()) == 0 ? 0 : errno;
    if (error != 0 && !QFileInfo(folder).isDir())
        throw RunTimeError::fromErrno(error == EEXIST ? ENOTDIR : error, folder);
}

} // namespace ostrel
