// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace ostrel {

/// Operations on single folders. A symbolic link to a folder does not count as a folder and is never followed. A
/// failure is a RunTimeError.
namespace Directories {

/// Hidden or not.
bool exists(const QString &path);
bool isLink(const QString &path);

/// Makes one folder, for the user alone; it is on the disk when this returns. False when the name exists already.
[[nodiscard]] bool make(const QString &path);
/// Hides a folder from file managers: adds its name to the list `.hidden` beside it, which must be a plain file or
/// missing.
void hide(const QString &path);

/// The names of the folders in a folder, sorted, hidden ones too, and the names that cannot be examined and so may be
/// folders. Empty when there is no such folder.
QStringList folderNames(const QString &folder);

/// Removes an empty folder; it is off the disk when this returns.
void remove(const QString &folder);

} // namespace Directories

} // namespace ostrel
