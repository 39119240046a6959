// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// The program's files and folders: below the user's home, or below XDG_DATA_HOME and XDG_CONFIG_HOME.
class Folders {
public:
    /// Makes App.Path; a failure is a RunTimeError.
    Folders();

    /// App.Path, without a trailing separator.
    const QString &appPath() const { return appPath_; }
    QString errorLog() const { return appPath_ + QStringLiteral("/ChartErr.log"); }
    /// The file of the settings store; its folder need not exist.
    static QString settingsFile();
    /// The installed read-only files, mainly the help: ../share/ostrel, seen from the program's own folder.
    static QString sharedFolder();

private:
    QString appPath_;
};

/// Makes a folder and its missing parents, for the user alone; existing folders keep their permissions. A failure is a
/// RunTimeError.
void makePath(const QString &folder);

} // namespace ostrel
