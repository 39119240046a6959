// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace ostrel {

/// Counts of the events on a serial line since the computer started.
struct LineCounters {
    int breaks = 0;
    int framing = 0;
    int overrun = 0; ///< the chip was not read in time
    int lost = 0;    ///< the kernel's buffer was not read in time
    int parity = 0;

    // The signals: twice the changes that the driver counted, plus 1 while the signal is on. Some drivers count none.
    int cts = 0;
    int dsr = 0;
    int carrier = 0;
    int ring = 0;
};

/// The terminal device of a serial port, below QSerialPort: claims it for one program, and has the calls that
/// QSerialPort lacks.
class SerialDevice {
public:
    /// Claims the device before any setting of it is changed. Raises 8002 when there is none or it is no terminal, 8005
    /// when another program uses it or permission is missing.
    explicit SerialDevice(const QString &path);

    /// The device's own path, without symbolic links.
    QString path() const;
    /// A path of the device that no other process uses.
    QString privatePath() const;
    int descriptor() const { return device_.get(); }

    /// Other processes can no longer open the device, even if they ignore locks; only root can.
    void excludeOthers();

    /// From now on the device reports bytes only when this many wait; the count is limited to 1 to 255.
    void reportAt(int bytes);
    /// Bytes that wait in the kernel.
    int waiting() const;
    QByteArray takeWaiting();

    /// None for a device that neither counts nor has signals, such as a pseudo-terminal.
    std::optional<LineCounters> counters() const;

private:
    Descriptor device_;
    int reportAt_ = -1; ///< -1: not set by us yet
};

} // namespace ostrel
