// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace ostrel {

struct ArchiveFile {
    QString path;  ///< as the operand leads there
    QString place; ///< absolute, through folders alone: the same for all ways to the file
};

/// What operands name: files, and folders with everything below them.
struct ArchiveFiles {
    std::vector<ArchiveFile> files;   ///< sorted by path; each place once
    std::vector<ArchiveFile> folders; ///< those named, without a separator at the end
    QStringList unread;               ///< what could not be looked at, with the reason, a line each

    /// Sorts, and keeps one of several paths to a place.
    void sort();
};

/// Absolute, with all symbolic links to folders resolved. The file, and even its folder, need not exist.
QString placeOf(const QString &path);

/// A file that is named is taken whatever it is. Of a folder, the files with the name of a data file or a log file are
/// taken, and those that bear the mark of chart files. Pieces of running logs and temporary files of our programs are
/// not, and symbolic links below a named folder are not followed to folders.
ArchiveFiles findArchiveFiles(const QStringList &operands);

} // namespace ostrel
