// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorNumbers.h"

#include <QByteArray>
#include <QtGlobal>

#include <functional>

namespace ostrel {

/// The receiving end of a serial port: 9600 baud, 8 data bits, no parity, 1 stop bit, raw, no handshaking, exclusive.
class SerialControl {
public:
    virtual ~SerialControl() = default;

    /// The number of the port, 1 to 10. Takes effect at the next opening.
    virtual qint16 CommPort() const = 0;
    virtual void setCommPort(qint16 number) = 0;

    /// Stays true when the device vanishes; the control then opens the device again by itself when it comes back.
    virtual bool PortOpen() const = 0;
    /// Raises 8002 when the computer has no such port or it is no terminal, 8005 when another program holds it or it
    /// may not be opened, another number when the device fails.
    virtual void setPortOpen(bool open) = 0;

    /// Bytes that the input buffer takes; what comes beyond is lost with event 1008.
    virtual void setInBufferSize(int bytes) = 0;
    /// A receive event is raised at each arrival of bytes that leaves this many or more waiting.
    virtual void setRThreshold(int bytes) = 0;
    /// Bytes that wait in the input buffer.
    virtual int InBufferCount() const = 0;
    /// Takes all that waits out of the input buffer.
    virtual QByteArray Input() = 0;

    /// The number of the event being raised: ErrorNumber::ReceiveEvent, or that of a change or a fault of the line.
    virtual int CommEvent() const = 0;
    /// Raised for every event of the line, on the user-interface thread. It may show dialogs and close the port. What
    /// it throws reaches the event loop, or the caller of lookAtLine, after the other events that were due.
    std::function<void()> OnComm;

    /// Raises at once what has come in and what has happened on the line since the last look, one event of a kind. The
    /// control looks by itself at each arrival and now and then; whoever asks whether the line lives calls this first.
    virtual void lookAtLine() {}
};

} // namespace ostrel
