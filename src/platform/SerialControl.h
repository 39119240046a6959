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

    /// Stays true when the device is unplugged; the control opens the device again by itself when it is back.
    virtual bool PortOpen() const = 0;
    /// Raises 8002 when the computer has no such port or it is no terminal, 8005 when another program uses it or
    /// permission is missing, another number when the device fails.
    virtual void setPortOpen(bool open) = 0;

    /// Size of the input buffer in bytes; bytes beyond it are lost, with event 1008.
    virtual void setInBufferSize(int bytes) = 0;
    /// A receive event is raised at each arrival of bytes that leaves this many or more waiting.
    virtual void setRThreshold(int bytes) = 0;
    /// Bytes waiting, at most the size of the input buffer.
    virtual int InBufferCount() const = 0;
    /// Takes all waiting bytes.
    virtual QByteArray Input() = 0;

    /// The number of the event being raised: ErrorNumber::ReceiveEvent, or that of a change or a fault of the line.
    virtual int CommEvent() const = 0;
    /// Raised for every event of the line, on the user-interface thread. It may show dialogs and close the port. Its
    /// exceptions reach the event loop, or the caller of lookAtLine, after all pending events.
    std::function<void()> OnComm;

    /// Raises at once the events since the last check of the line, one of each kind. The control checks by itself at
    /// each arrival of bytes and now and then; call this before deciding whether the line is alive.
    virtual void lookAtLine() {}
};

} // namespace ostrel
