// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QDate>
#include <QString>

#include <system_error>
#include <vector>

namespace ostrel {

/// Where the files of running logs go that the program throws away: a folder with one directory for each, named after
/// the log's own and the day. There they stay for a month, unless all of them together take too much room. Only
/// directories of such a name are touched, and only files of logs in them; no link is followed.

inline constexpr int wastebasketDays = 30;
inline constexpr quint64 wastebasketBytes = 2'000'000'000;

/// Moves all plain files of a log's directory to the wastebasket, which is made when it is missing, but for documents
/// that the user saved there; what has been moved is on the disk. On an error (errno) all files are where they were.
std::error_code moveToWastebasket(const QString &directory, const QString &wastebasket, const QDate &today,
                                  FileOperations &operations = FileOperations::system());

struct DiscardedLog {
    QString path;
    QDate day;
    quint64 bytes = 0; ///< that its files take on the disk
};
/// What is there, the oldest first.
std::vector<DiscardedLog> discardedLogs(const QString &wastebasket,
                                        FileOperations &operations = FileOperations::system());

/// Deletes what is older than a month, and the oldest of what takes more than so many bytes together. What cannot be
/// deleted stays.
void keepWastebasketLimits(const QString &wastebasket, const QDate &today, quint64 mostBytes = wastebasketBytes,
                           FileOperations &operations = FileOperations::system());

} // namespace ostrel
