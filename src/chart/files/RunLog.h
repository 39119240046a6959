// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RunningLogWriter.h"
#include "chart/run/Run.h"

#include <QDate>
#include <QStringList>

#include <functional>

namespace ostrel {

/// The running log of one copy of the program: a directory that is filled from here alone. Its path comes with or
/// without a separator at its end, and InstanceNumber may be any. A status of 0 is good.
class RunLog {
public:
    /// Of this run, which is only read.
    explicit RunLog(const Run &run) : run_(run) {}

    /// Brings what the run took since the last success to the disk. Interval is the time between calls in
    /// milliseconds; after DataFileSizeHours of data the log goes on in a new file. 0 is good: all that the run holds
    /// survives the end of the computer. Any other status is an error code of the system.
    qint16 WriteLog(const QString &LogDirectory, qint16 InstanceNumber, qint32 Interval, double DataFileSizeHours);
    /// The log holds at least one sample or mark, or held some that are damaged; or a data file is there that
    /// cannot be read at this moment.
    bool CheckLogFile(const QString &LogDirectory) const;
    /// Puts the log in the directory, of whichever run, together in one log file. 0 is good. Where
    /// something of it is missing ChartError tells so, and the rest is saved.
    qint16 SaveLogAs(const QString &LogDirectory, qint16 InstanceNumber, const QString &NewFileName) const;
    /// Lets go of the log and empties the directory as DiscardLog does.
    void CloseLog(const QString &LogDirectory, qint16 InstanceNumber);

    /// The data files in the directory that cannot be read to their ends at this moment, or not by this program, each
    /// with the reason.
    QStringList UnreadLogFiles(const QString &LogDirectory) const;
    /// Moves the log's files to the wastebasket; deletes those of a log without a sample or mark and without damage.
    /// Documents that the user saved there stay. False when files of the log stay: one cannot be read at this moment,
    /// or be moved.
    bool DiscardLog(const QString &LogDirectory) const;
    /// Deletes of the wastebasket what is too old or too much.
    void KeepWastebasketLimits() const;
    /// The folder that discarded logs go to, under the date that `today` answers. Without a folder they are deleted.
    void setWastebasket(const QString &folder, std::function<QDate()> today);

    std::function<void(qint16 ErrorCode)> ChartError; ///< tells a failure; may be empty

private:
    const Run &run_;
    RunningLogWriter writer_;
    int written_ = 0; // number of the run that the writer works on
    QString wastebasket_;
    std::function<QDate()> today_;
};

} // namespace ostrel
