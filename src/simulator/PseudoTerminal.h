// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/SystemFile.h"

#include <QByteArray>
#include <QString>
#include <termios.h>

namespace ostrel {

/// The instrument's end of a serial line: a pseudo-terminal, raw, 9600 baud. Whoever listens, any user of the computer,
/// opens path() like any port; listeners come and go.
class PseudoTerminal {
public:
    /// A symbolic link `link`, unless empty, leads to the listener's end as long as this lives; one that is there
    /// is replaced, anything else refused. Raises a run-time error.
    explicit PseudoTerminal(const QString &link = {});
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    const QString &path() const { return path_; }
    /// Becomes readable when the last listener has gone, and when one has sent something. Lives until path() changes.
    int file() const { return master_.number(); }
    /// Whether anybody has the port open.
    bool isHeard() const;

    /// Sends what the line takes, without waiting, and answers how many bytes that was: none while nobody has the port
    /// open, and not all when a listener has left some 4000 bytes or more unread. What is not taken and not sent again
    /// is lost, as on a serial line whose receiver is not read in time.
    qsizetype send(const QByteArray &bytes);

    /// To be called now and then. Discards what listeners have sent and, while there are none, what they have left: a
    /// listener that was killed leaves its settings, unread bytes and a claim that keeps others out. Only root can lift
    /// such a claim; for anybody else there is then a new port. True when path() is a new one, to which the link leads.
    /// Raises a run-time error when there can be none.
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
