// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonDocument>
#include <QString>
#include <QTextStream>

namespace ostrel {

/// The output of a command, line by line. Titles, labels, notes and file names may contain anything, so control
/// characters, and characters that change the direction of the text, are escaped.
class Lines {
public:
    explicit Lines(QTextStream &stream) : stream_(stream) {}
    ~Lines() { show({}); }
    Lines(const Lines &) = delete;
    Lines &operator=(const Lines &) = delete;

    /// Such characters, line ends too, are written as their numbers: "\x1b", "\u202e".
    void tell(const QString &line);
    /// For scripts: with the escapes of JSON, so that a reader gets the original text.
    void tell(const QJsonDocument &document);
    /// Flushes the stream. False when a part could not be written.
    bool deliver();
    /// The reason of a failed write.
    QString error() const;

    bool isTerminal() const;
    /// On a terminal, the last line, which stands until the next status or line takes its place; empty for none.
    /// Elsewhere nothing.
    void show(const QString &status);

private:
    QTextStream &stream_;
    bool shows_ = false; ///< a status
};

} // namespace ostrel
