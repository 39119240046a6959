// SPDX-License-Identifier: MIT
#include "platform/Folders.h"

#include "base/RunTimeError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <filesystem>

Folders::Folders() : appPath_(appFolder()) { makePath(appPath_); }

QString Folders::appFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/ostrel");
}

QString Folders::settingsFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/ostrel/Ostrel MS.ini");
}

QString Folders::sharedFolder() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/ostrel"));
}

void makePath(const QString &folder) {
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(folder).toStdString(), error);
    if (error)
        throw RunTimeError::fromErrno(error.value(), folder);
}
