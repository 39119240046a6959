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

/// Names the file that is being written; null for none. The path must stay valid until the next call.
void setUnfinished(const char *path);
/// Removes that file. For a signal handler in a program that writes one file at a time.
void removeUnfinished();

} // namespace TemporaryFiles

} // namespace ostrel
