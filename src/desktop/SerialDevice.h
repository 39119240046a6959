// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace ostrel {

/// What has happened on a serial line since the computer started.
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

/// The terminal device of a serial port beneath QSerialPort: claimed for one program, and asked and told what
/// QSerialPort has no words for.
class SerialDevice {
public:
    /// Claims the device before anything of it is touched. Raises 8002 when there is none or it is no terminal, 8005
    /// when another program holds it or it may not be opened.
    explicit SerialDevice(const QString &path);

    /// The device's own path, by whatever link it was found.
    QString path() const;
    /// A path of the device that no other process has.
    QString privatePath() const;
    int descriptor() const { return device_.get(); }

    /// Others can no longer open the device, whether they honour locks or not; only root still can.
    void excludeOthers();

    /// From now on the device reports bytes only once this many wait, as far as terminals count (255).
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
