// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RunningLogWriter.h"
#include "chart/run/Run.h"

#include <QDate>
#include <QStringList>

#include <functional>

namespace ostrel {

/// The running log of one copy of the program, in a directory that only this class fills. Paths may end in a separator,
/// InstanceNumber may be any number. A status of 0 is success.
class RunLog {
public:
    /// `run` is only read.
    explicit RunLog(const Run &run) : run_(run) {}

    /// Writes what the run got since the last successful call to the disk. Interval, the time between calls in
    /// milliseconds, is not used; after DataFileSizeHours of data a new file begins. 0: all that the run holds survives
    /// a power cut. Any other status is the number of a run-time error.
    qint16 WriteLog(const QString &LogDirectory, qint16 InstanceNumber, qint32 Interval, double DataFileSizeHours);
    /// The log holds at least one sample or mark, or held some that are damaged; or a data file there cannot be read at
    /// this moment or by this program.
    bool CheckLogFile(const QString &LogDirectory) const;
    /// Puts the log in the directory, of any run, together in one log file. 0 is success. When parts are missing the
    /// rest is saved, and ChartError is called.
    qint16 SaveLogAs(const QString &LogDirectory, qint16 InstanceNumber, const QString &NewFileName) const;
    /// Closes the log's files and discards them as DiscardLog does.
    void CloseLog(const QString &LogDirectory, qint16 InstanceNumber);

    /// The data files in the directory that cannot be read to the end at this moment or by this program, each with
    /// the reason.
    QStringList UnreadLogFiles(const QString &LogDirectory) const;
    /// Moves the log's files to the wastebasket; deletes those of a log without a sample or mark and without damage.
    /// Documents that the user saved there stay. False when a file cannot be read at this moment or cannot be moved:
    /// then all files stay.
    bool DiscardLog(const QString &LogDirectory) const;
    /// Deletes logs from the wastebasket that exceed its limits of age and size.
    void KeepWastebasketLimits() const;
    /// Sets the folder for discarded logs; `today` gives the date in their names. Without a folder they are deleted.
    void setWastebasket(const QString &folder, std::function<QDate()> today);

    std::function<void(qint16 ErrorCode)> ChartError; ///< called on a failure; may be empty

private:
    const Run &run_;
    RunningLogWriter writer_;
    int written_ = 0; // number of the run that the writer works on
    QString wastebasket_;
    std::function<QDate()> today_;
};

} // namespace ostrel
