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
    /// `onTerminal`: somebody looks at the output while the command works.
    explicit Lines(QTextStream &stream, bool onTerminal = false) : stream_(stream), onTerminal_(onTerminal) {}
    ~Lines() { clearPassing(); }
    Lines(const Lines &) = delete;
    Lines &operator=(const Lines &) = delete;

    /// Such characters, line ends too, are written as their numbers: "\x1b", "\u202e".
    void tell(const QString &line);
    /// For scripts: with the escapes of JSON, so that a reader gets the original text.
    void tell(const QJsonDocument &document);
    /// On a terminal, shows a line that the next one takes the place of; elsewhere nothing.
    void tellInPassing(const QString &line);
    /// Flushes the stream. False when a part could not be written.
    bool deliver();
    /// The reason of a failed write.
    QString error() const;

private:
    void clearPassing();

    QTextStream &stream_;
    bool onTerminal_;
    bool passing_ = false; ///< such a line is shown
};

} // namespace ostrel
