// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QDate>
#include <QString>

#include <system_error>
#include <vector>

namespace ostrel {

/// The folder that discarded running logs go to. Each gets a directory there, named after the log's own directory and
/// the day. It stays for 30 days, unless all of them together take too much room. Only directories with such a name are
/// touched, and only files of logs in them; no symbolic link is followed.

inline constexpr int wastebasketDays = 30;
inline constexpr quint64 wastebasketBytes = 2'000'000'000;

/// Moves all regular files of a log's directory, except documents that the user saved there, to the wastebasket, which
/// is made when missing. No error means that this is on the disk. On an error (errno) the files are moved back.
std::error_code moveToWastebasket(const QString &directory, const QString &wastebasket, const QDate &today,
                                  FileOperations &operations = FileOperations::system());

struct DiscardedLog {
    QString path;
    QDate day;
    quint64 bytes = 0; ///< that its files take on the disk
};
/// The logs in the wastebasket, the oldest first.
std::vector<DiscardedLog> discardedLogs(const QString &wastebasket,
                                        FileOperations &operations = FileOperations::system());

/// Deletes logs older than 30 days, then the oldest ones while all together take more than `mostBytes`. What cannot be
/// deleted stays.
void keepWastebasketLimits(const QString &wastebasket, const QDate &today, quint64 mostBytes = wastebasketBytes,
                           FileOperations &operations = FileOperations::system());

} // namespace ostrel
