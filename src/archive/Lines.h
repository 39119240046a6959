// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonDocument>
#include <QString>
#include <QTextStream>

namespace ostrel {

/// Where a command says what it has to say, line by line. Titles, labels, notes and names of files come from anywhere:
/// no character of theirs that a terminal would obey, or that would show the line in another order, goes out raw.
class Lines {
public:
    explicit Lines(QTextStream &stream) : stream_(stream) {}

    /// Such characters, line ends too, are shown by their numbers: "\x1b", "\u202e".
    void tell(const QString &line);
    /// For scripts: escaped as JSON has it, so that each text comes back as it was.
    void tell(const QJsonDocument &document);
    /// Hands on what was told. False when some of it got lost.
    bool deliver();
    /// Of what got lost.
    QString error() const;

private:
    QTextStream &stream_;
};

} // namespace ostrel
