// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// A file's name with the extension at its end, whatever points it has already: "SEC 3.1" with "chd" is
/// "SEC 3.1.chd". Blanks and a point that were left at the end are no part of the name; a folder's separator stays.
inline QString completedName(QString file, const QString &extension) {
    while (!file.isEmpty() && file.back().isSpace())
        file.chop(1);
    const QString ending = QLatin1Char('.') + extension;
    if (file.endsWith(QLatin1Char('/')) || file.endsWith(ending, Qt::CaseInsensitive))
        return file;
    return file.endsWith(QLatin1Char('.')) ? file + extension : file + ending;
}

} // namespace ostrel
