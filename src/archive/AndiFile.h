// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "files/FileOperations.h"

#include <QDateTime>
#include <QStringList>

#include <system_error>

namespace ostrel {

/// A run as interchange files for other programs, ASTM E1947 (ANDI, AIA): docs/interchange.md. Such a file holds one
/// signal and has no place for marks, so a run makes three: UV under the given name, the conductivity and the marks
/// under names made of it.
QStringList andiNames(const QString &path);

/// A run with fewer samples cannot be written.
inline constexpr qint64 fewestAndiPoints = 2;

/// What the files say about themselves.
struct AndiOrigin {
    QString file; ///< name of the run's file; stands in for an empty title
    QDateTime made;
};

/// Writes the three files. On an error (errno) none of them is new, unless the disk fails in the moment when the last
/// ones get their names; then the one of the given name is the old one.
std::error_code exportAndi(const QString &path, const ChartData &run, const AndiOrigin &origin,
                           FileOperations &operations = FileOperations::system());

} // namespace ostrel
