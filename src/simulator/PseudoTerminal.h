// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// The instrument's end of a serial line: a pseudo-terminal, raw, 9600 baud. Whoever listens opens path() like any
/// port.
class PseudoTerminal {
public:
    /// A symbolic link `link`, unless empty, leads to the listener's end as long as this lives; one that stands there
    /// is replaced, anything else refused. Raises a run-time error.
    explicit PseudoTerminal(const QString &link = {});
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    const QString &path() const { return path_; }

    /// Sends what the line takes, without waiting, and answers how many bytes that was. None while nobody has the port
    /// open; listeners come and go.
    qsizetype send(const QByteArray &bytes);

private:
    void open();
    void makeRaw() const;
    void makeLink() const;

    int master_ = -1;
    QString path_;
    QByteArray link_;
};
