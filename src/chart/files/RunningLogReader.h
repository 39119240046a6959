// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"
#include "files/FileOperations.h"

#include <QString>
#include <QStringList>

#include <system_error>
#include <vector>

namespace ostrel {

/// A file of a running log that cannot be used.
struct BadLogFile {
    QString path;
    std::error_code error; ///< bad_message: its head is damaged and nothing behind it is whole; not_supported: of a
                           ///< newer version; anything else is the operating system's

    /// It may hold more of the log than can be read at this moment, or by this program.
    bool isUnread() const { return error != std::errc::bad_message; }
};

/// What was found of a running log, put together: all whole records of all data files in a directory. What a failed
/// call or a power cut left half-written at the end of a file is no fault; what is missing of the rest is.
struct RecoveredLog {
    /// Samples that no file holds. Where so many are missing that it cannot be true the times behind them move up;
    /// otherwise the gap holds samples that are not a number.
    struct Gap {
        double at;     ///< minutes in `data`
        double length; ///< minutes
        bool filled;
    };

    ChartData data; ///< several runs of the program are one behind the other; its title is the name of the system
    std::vector<Gap> gaps;
    quint64 lostMarks = 0;
    quint64 lostMethodTexts = 0;
    bool lostTexts = false; ///< the notes, or the name of the system, in the last form or in all
    std::vector<BadLogFile> badFiles;
    qint64 begun = 0; ///< when the first file was, milliseconds since 1970, UTC; 0 without any

    /// Nothing that would be worth a file.
    bool empty() const { return data.samples.size() == 0 && data.marks.empty(); }
    /// Nothing is missing.
    bool whole() const {
        return gaps.empty() && lostMarks == 0 && lostMethodTexts == 0 && !lostTexts && badFiles.empty();
    }
    /// To show all of it.
    AxisValues axes() const;
};

/// Reads the log, of whichever run and instance. The path comes with or without a separator at its end.
RecoveredLog readRunningLog(const QString &directory, FileOperations &operations = FileOperations::system());

/// What a quick look at a directory tells: it ends with the first sample or mark, and searches some megabytes of a
/// damaged file at most. Each of these outweighs those before it.
enum class LogFinding {
    Nothing, ///< no log, or one that never held a sample or a mark
    Damage,  ///< something that cannot be made out, and nothing else
    Log,     ///< a sample or a mark, word of samples that are lost, or more damage than a quick look goes through
    Unread   ///< a file that cannot be read at this moment, or by this program
};
LogFinding findRunningLog(const QString &directory, FileOperations &operations = FileOperations::system());

/// The files in words, a line each.
QStringList inWords(const std::vector<BadLogFile> &files);

} // namespace ostrel
