// SPDX-License-Identifier: MIT
#pragma once

#include <QStandardPaths>
#include <QString>

namespace ostrel {

/// The folders of the user's data, as paths without a trailing separator. Nothing here creates a folder.
namespace AppFolders {

/// App.Path: a folder of the user, below XDG_DATA_HOME where that is set.
inline QString app() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/ostrel");
}

/// The running logs, a directory for each copy of the program.
inline QString logs(const QString &appPath) { return appPath + QStringLiteral("/Log"); }

/// Discarded logs, kept for a while.
inline QString wastebasket(const QString &appPath) { return appPath + QStringLiteral("/Discarded"); }

} // namespace AppFolders

} // namespace ostrel
