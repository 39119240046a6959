// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RecordFile.h"
#include "files/FileOperations.h"

#include <QString>
#include <QStringList>

#include <system_error>
#include <vector>

namespace ostrel {

/// Finds the data files of a running log in its directory, whatever their names and state.

/// A file of a running log that cannot be used.
struct BadLogFile {
    QString path;
    std::error_code error; ///< bad_message: its header is damaged and no record of samples behind it is intact;
                           ///< not_supported: of a newer version; anything else is the operating system's

    /// It may hold parts of the log that cannot be read at this moment or by this program.
    bool isUnread() const { return error != std::errc::bad_message; }
};

/// A data file whose records can be read.
struct LogDataFile {
    QString path;
    FileHead head; ///< one that its records agree with, if its own is damaged
    quint64 size = 0;
    quint64 firstSample = 0; ///< its number in the run
};

struct LogDataFiles {
    /// The files of one run after the other, those of a run by their first samples.
    std::vector<std::vector<LogDataFile>> runs;
    std::vector<BadLogFile> badFiles;
    qint64 begun = 0;    ///< when the first file was begun, milliseconds since 1970, UTC; 0 when not known
    bool gaveUp = false; ///< a quick look has not searched all of a damaged file

    /// Keeps each file only once, with its first error.
    void addBadFile(const QString &path, std::error_code error);
    /// The files have room for so many samples.
    quint64 room() const;
};

/// A quick look at a damaged file searches so many bytes of it.
inline constexpr quint64 searchedInAQuickLook = 4 << 20;

LogDataFiles findLogDataFiles(const QString &directory, bool quickLook, FileOperations &operations);

/// One line for each file: its path and what is wrong with it.
QStringList inWords(const std::vector<BadLogFile> &files);

} // namespace ostrel
