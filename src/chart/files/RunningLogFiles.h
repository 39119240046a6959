// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RecordFile.h"
#include "files/FileOperations.h"

#include <QString>

#include <system_error>

namespace ostrel {

/// What the writer and the reader of a running log agree on. docs/file-format.md has every byte.
///
/// The directory of a log holds data files Log00001.dat, Log00002.dat and so on, in the order in which they were begun.
/// All files of one run of the program have the same identity; each begins with a record of samples, possibly empty,
/// that tells at which sample it sets in.

inline constexpr quint32 runningLogKind = fourLetters("TICK");
inline constexpr quint32 runningLogVersion = 1;

/// The directory without a separator at its end and without links or steps in it; empty for an empty path.
QString logDirectory(const QString &path);
QString logFileName(int number);
/// 0 when it is not the name of a data file.
int logFileNumber(const QString &name);

/// A data file or log file that the user saves, in capitals too.
bool isNamedAsDocument(const QString &name);

/// A plain file that is no document that the user saved into the log's directory, of all places. Also false for what
/// cannot be read at this moment: then `unread` says why.
bool belongsToLog(const QString &path, FileOperations &operations = FileOperations::system(),
                  std::error_code *unread = nullptr);

/// Leaves nothing in the directory but folders, documents that the user saved into it, and what cannot be read at this
/// moment.
void emptyLogDirectory(const QString &directory, FileOperations &operations = FileOperations::system());

} // namespace ostrel
