// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace ostrel {

/// The lock files by which serial programs tell each other that a port is taken, such as /run/lock/LCK..ttyS0. Whose
/// owner is dead does not count.
namespace PortLocks {

/// Where they lie, first the folder that QSerialPort prefers for its own.
const QStringList &usualFolders();

/// Makes way for whoever is about to open the device that has all these paths: a lock is made under the name by which a
/// program was given the device. Raises 8005 when a living program, or one that cannot be told from a living one, holds
/// a lock. What dead ones left is removed, as far as this user may.
void takeOver(const QStringList &paths, const QStringList &folders = usualFolders());

/// The file that QSerialPort locks a port of this path by; empty when there is no folder for it.
QString fileOfQSerialPort(const QString &path);

/// The first of a device's paths by which QSerialPort finds the place of its lock free, else the last. What cannot be
/// removed, such as the lock of another user's dead program, would keep it from opening the device.
QString freeName(const QStringList &paths);

} // namespace PortLocks

} // namespace ostrel
