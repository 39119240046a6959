// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <sys/types.h>

namespace ostrel {

/// The lock files by which serial programs show each other that a port is in use, such as /run/lock/LCK..ttyS0. A lock
/// whose owner is dead does not count.
namespace PortLocks {

/// The folders of the locks, in the order in which QSerialPort chooses one for its own lock.
const QStringList &usualFolders();

/// Call it before opening a device; `paths` are all paths of the device, since a program names its lock after the path
/// it was given. Raises 8005 when a live program, or one that may be alive, holds a lock. Removes the locks of dead
/// programs, as far as this user may.
void takeOver(const QStringList &paths, const QStringList &folders = usualFolders());

/// The live process that a lock of the device names; 0 for none or when it cannot be known. Changes nothing.
pid_t owner(const QStringList &paths, const QStringList &folders = usualFolders());

/// The lock file of QSerialPort for a port with this path; empty when there is no folder for it.
QString fileOfQSerialPort(const QString &path);

/// The first of a device's paths whose lock file QSerialPort can make, else the last path. A lock file that cannot be
/// removed, such as the one of another user's dead program, would keep QSerialPort from opening the device.
QString freeName(const QStringList &paths);

} // namespace PortLocks

} // namespace ostrel
