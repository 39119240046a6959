// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SettingsStore.h"

#include <QElapsedTimer>
#include <QStringList>

namespace ostrel {

/// Which device is COM n: what the settings name under Ports, n, or else the n-th serial device of the
/// computer.
class SerialPorts {
public:
    /// `ttyFolder` is where the kernel lists its terminals.
    explicit SerialPorts(const SettingsStore &store, QString ttyFolder = QStringLiteral("/sys/class/tty"));

    /// The device's path; empty when there is no such port. A failure of the store is a RunTimeError. A device that is
    /// plugged in now may be found a second later.
    QString device(int number);
    /// The serial devices of the computer in natural order, on-board ones first. None is opened for it, so that ports
    /// that are in use count too.
    QStringList installed() const;

private:
    const SettingsStore &store_;
    QString ttyFolder_;
    QStringList listing_;
    QElapsedTimer listed_; ///< since the last listing
};

} // namespace ostrel
