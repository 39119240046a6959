// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SettingsStore.h"

#include <QElapsedTimer>
#include <QStringList>

namespace ostrel {

/// Finds the device for COM n: the setting n in the section Ports, or else the n-th serial device of the computer.
class SerialPorts {
public:
    /// `ttyFolder` is where the kernel lists its terminals.
    explicit SerialPorts(const SettingsStore &store, QString ttyFolder = QStringLiteral("/sys/class/tty"));

    /// The device's path; empty when there is no such port. A failure of the store is a RunTimeError. A device may be
    /// found up to a second after it was plugged in.
    QString device(int number);
    /// The serial devices of the computer in natural order, on-board ones first. No device is opened for this, so ports
    /// in use are listed too.
    QStringList installed() const;

private:
    const SettingsStore &store_;
    QString ttyFolder_;
    QStringList listing_;
    QElapsedTimer listed_; ///< since the last listing
};

} // namespace ostrel
