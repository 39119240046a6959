// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QByteArray>

namespace ostrel {

/// The temporary files that DurableFile writes beside its targets:
///
///     .ostrel-<computer>-<session>-<process>-<token>-<number>.tmp
///
/// Computer and session (since the computer was started) are hashes, the token is drawn by each process anew. So a name
/// is unlike any that an earlier process left, and tells whether the one that wrote it can still be alive.
namespace TemporaryFiles {

/// Another one each time, without a folder.
QByteArray newName();

/// Removes from a folder, named with its trailing separator, what killed programs have left. What may belong to a
/// living one stays: anything of another computer, a process number that is in use by whatever program, and for an hour
/// what cannot be decided. One listing of the folder, or of the first ten thousand entries of a huge one.
void clearDead(const QByteArray &folder, FileOperations &operations);

/// The file being written at present; null for none. The path must stay where it is until then.
void setUnfinished(const char *path);
/// Removes that file. For a signal handler in a program that writes one file at a time.
void removeUnfinished();

} // namespace TemporaryFiles

} // namespace ostrel
