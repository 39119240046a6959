// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// Where the program keeps its things: folders of the user, or what XDG_DATA_HOME and XDG_CONFIG_HOME name instead.
class Folders {
public:
    /// Makes App.Path; a failure is a RunTimeError.
    Folders();

    /// App.Path, without a trailing separator.
    const QString &appPath() const { return appPath_; }
    QString errorLog() const { return appPath_ + QStringLiteral("/ChartErr.log"); }
    /// The file of the settings store; its folder need not exist.
    static QString settingsFile();
    /// Of what came with the program and is only read, its help above all; beside the program's own folder.
    static QString sharedFolder();

private:
    QString appPath_;
};

/// Makes a folder and those above it that are missing, for the user alone; what exists keeps its permissions. A failure
/// is a RunTimeError.
void makePath(const QString &folder);

} // namespace ostrel
