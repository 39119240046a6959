// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace ostrel {

/// Folders one at a time, and what is in them. A symbolic link to a folder is no folder here, and is never
/// followed. A failure is a RunTimeError.
namespace Directories {

/// Hidden or not.
bool exists(const QString &path);
bool isLink(const QString &path);

/// Makes one folder, for the user alone; it is on the disk when this returns. False when something of that name is
/// there.
[[nodiscard]] bool make(const QString &path);
/// Hides it from file managers: its name comes into the list `.hidden` beside it, which must be a plain file or
/// missing.
void hide(const QString &path);

/// The names of the folders in a folder, hidden ones too, sorted, along with what cannot be looked at and so may be
/// one; empty when there is no such folder.
QStringList folderNames(const QString &folder);

/// Only an empty folder goes; it is off the disk when this returns.
void remove(const QString &folder);

} // namespace Directories

} // namespace ostrel
