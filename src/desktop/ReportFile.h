// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

namespace ostrel {

/// The PDF file that reports go to in place of a printer. Only the first one may replace a file: the one that was
/// there when the name was chosen, if the operator agreed to that. What has come or changed since then stays, and so
/// does every report: the next ones get the next free name beside it, "report-2.pdf".
class ReportFile {
public:
    ReportFile(const QString &chosen, bool mayReplace);

    /// Where the next report will be, as far as can be told.
    QString next() const { return nextFree(chosen_); }
    /// Answers the file that the document is in; empty when that failed, which leaves nothing behind.
    QString make(const QByteArray &document);

    /// The name itself when it is free; otherwise with the next number behind it, from 2 on.
    static QString nextFree(const QString &file);
    static bool isFree(const QString &file);
    /// A PDF document that may be written, or an empty file, which holds nothing.
    static bool isReplaceable(const QString &file);

private:
    /// By which a file is known again.
    struct State {
        bool operator==(const State &) const = default;
        qint64 size;
        QDateTime modified;
    };
    static State stateOf(const QString &file);
    QString makeBeside(const QByteArray &document) const;

    QString chosen_;
    std::optional<State> replaced_; ///< what the next report may replace
};

} // namespace ostrel
