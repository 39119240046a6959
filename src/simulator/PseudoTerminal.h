// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/SystemFile.h"

#include <QByteArray>
#include <QString>
#include <termios.h>

namespace ostrel {

/// The instrument's end of a serial line: a pseudo-terminal, raw, 9600 baud. A listener, any user of the computer,
/// opens path() like a serial port; listeners may come and go.
class PseudoTerminal {
public:
    /// Unless `link` is empty, a symbolic link of this name leads to the listener's end while this object exists. An
    /// existing link is replaced, any other file refused. Raises a run-time error.
    explicit PseudoTerminal(const QString &link = {});
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    const QString &path() const { return path_; }
    /// Becomes readable when the last listener has gone, and when one has sent data. Valid until path() changes.
    int file() const { return master_.number(); }
    /// Whether a listener has the port open.
    bool isHeard() const;

    /// Sends as much as the line takes without waiting, and returns the number of bytes: 0 while nobody has the port
    /// open, and not all when a listener has left about 4000 bytes or more unread. The caller sends the rest again, or
    /// it is lost, as on a serial line whose receiver is not read in time.
    qsizetype send(const QByteArray &bytes);

    /// To be called now and then. Discards bytes sent by listeners and, while there is no listener, the traces of the
    /// last one: a killed listener leaves its settings, unread bytes and an exclusive claim that keeps others out. Only
    /// root can lift such a claim; for other users a new port is made. True when path() is a new port, to which the
    /// link then leads. Raises a run-time error when none can be made.
    bool lookAfter();

private:
    enum class Left { Nothing, Traces, Claim };

    void open();
    void makeLink() const;
    SystemFile openListener() const;
    Left leftByListeners() const;
    void clearTraces() const;

    SystemFile master_;
    QString path_;
    QByteArray link_;
    termios raw_{};
};

} // namespace ostrel
