// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

namespace ostrel {

/// The PDF file for reports in place of a printer. Only the first report may replace a file: the one that existed when
/// the name was chosen, if the operator agreed. A file that is newer or was changed since then is kept, and so is every
/// report: later reports get the next free name in the same folder, "report-2.pdf".
class ReportFile {
public:
    ReportFile(const QString &chosen, bool mayReplace);

    /// The probable name of the next report.
    QString next() const { return nextFree(chosen_); }
    /// Writes the document and returns its file; empty after a failure, which leaves no file.
    QString make(const QByteArray &document);

    /// The name itself when it is free; otherwise with the next free number appended, from 2 on.
    static QString nextFree(const QString &file);
    static bool isFree(const QString &file);
    /// A PDF document or an empty file, if the user may write it.
    static bool isReplaceable(const QString &file);

private:
    /// Shows whether a file was changed.
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
