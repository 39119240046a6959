// SPDX-License-Identifier: MIT
#pragma once

#include <QStandardPaths>
#include <QString>

namespace ostrel {

/// Where the program keeps what belongs to its user, none of it made here. Paths without a trailing separator.
namespace AppFolders {

/// App.Path: a folder of the user, below what XDG_DATA_HOME names where that is set.
inline QString app() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/ostrel");
}

/// The running logs, a directory for each copy of the program.
inline QString logs(const QString &appPath) { return appPath + QStringLiteral("/Log"); }

/// The logs that were thrown away, for a while.
inline QString wastebasket(const QString &appPath) { return appPath + QStringLiteral("/Discarded"); }

} // namespace AppFolders

} // namespace ostrel
