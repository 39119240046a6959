// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RecordFile.h"
#include "files/FileOperations.h"

#include <QString>

#include <system_error>

namespace ostrel {

/// Names and rules that the writer and the reader of a running log share. docs/file-format.md describes every byte.
///
/// The directory of a log holds data files Log00001.dat, Log00002.dat and so on, in the order in which they were begun.
/// All files of one run have the same identity. Each begins with a record of samples, possibly empty, that has the
/// number of the file's first sample.

inline constexpr quint32 runningLogKind = fourLetters("TICK");
inline constexpr quint32 runningLogVersion = 1;

/// The absolute path without ".", ".." and a separator at its end; symbolic links stay. Empty for an empty path.
QString logDirectory(const QString &path);
QString logFileName(int number);
/// The number in a data file's name; 0 when the name is not that of a data file.
int logFileNumber(const QString &name);

/// The name ends in .chd or .chl, in small or capital letters, like that of a file that the user saves.
bool isNamedAsDocument(const QString &name);

/// A regular file, unless its name or its header is that of a document that the user saved in the log's directory. Also
/// false when the file cannot be read at this moment; `unread` then has the reason.
bool belongsToLog(const QString &path, FileOperations &operations = FileOperations::system(),
                  std::error_code *unread = nullptr);

/// Deletes everything in the directory except folders, documents that the user saved there, and files that cannot be
/// read at this moment.
void emptyLogDirectory(const QString &directory, FileOperations &operations = FileOperations::system());

} // namespace ostrel
