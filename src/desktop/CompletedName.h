// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// A file's name with the extension appended, even when the name contains points: "SEC 3.1" with "chd" is "SEC
/// 3.1.chd". Blanks and a point at the end are dropped; the separator at the end of a folder stays.
inline QString completedName(QString file, const QString &extension) {
    while (!file.isEmpty() && file.back().isSpace())
        file.chop(1);
    const QString ending = QLatin1Char('.') + extension;
    if (file.endsWith(QLatin1Char('/')) || file.endsWith(ending, Qt::CaseInsensitive))
        return file;
    return file.endsWith(QLatin1Char('.')) ? file + extension : file + ending;
}

} // namespace ostrel
