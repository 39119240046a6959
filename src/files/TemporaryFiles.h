// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QByteArray>

namespace ostrel {

/// The temporary files that DurableFile writes beside its targets:
///
///     .ostrel-<computer>-<session>-<process>-<token>-<number>.tmp
///
/// Computer and session (boot and PID namespace) are hashes; each process draws a random token. So a name differs from
/// all names left by earlier processes, and it shows whether the process that wrote it can still be alive.
namespace TemporaryFiles {

/// Another one each time, without a folder.
QByteArray newName();
/// A name of this form, without a folder: the file is unfinished, or left by a killed program.
bool isName(const QByteArray &name);

/// Removes the files that killed programs left in a folder, given with its trailing separator. Files that a live
/// program may own stay: those of another computer, those whose process number any program uses, and undecidable ones
/// for an hour. Lists the folder once, and only its first ten thousand entries.
void clearDead(const QByteArray &folder, FileOperations &operations);

/// Tells of a file that is being written, and that it no longer is. The path must stay valid between the two.
void begun(const char *path);
void ended(const char *path);
/// Removes the files that are being written, up to eight of them. For a signal handler.
void removeUnfinished();

} // namespace TemporaryFiles

} // namespace ostrel
