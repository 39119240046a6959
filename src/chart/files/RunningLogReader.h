// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/ChartRecords.h"
#include "chart/files/RunningLogSearch.h"
#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"
#include "files/FileOperations.h"

#include <QString>

#include <vector>

namespace ostrel {

/// A running log as it was found: the intact records of all data files in a directory, put together. It counts as no
/// loss that a failed call or a power cut left the end of a file half-written; anything else that is missing is a loss.
struct RecoveredLog {
    ChartData data; ///< several runs one after the other; the title is the name of the system
    /// Samples that no file holds. A gap longer than the files have room for is not filled, and the times behind it
    /// move up.
    std::vector<SampleGap> gaps;
    quint64 lostMarks = 0;
    quint64 lostMethodTexts = 0;
    bool lostTexts = false; ///< the latest notes or name of the system, or all of them
    std::vector<BadLogFile> badFiles;
    qint64 begun = 0; ///< when the first file was begun, milliseconds since 1970, UTC; 0 without files

    /// There is neither a sample nor a mark to save.
    bool empty() const { return data.samples.size() == 0 && data.marks.empty(); }
    /// Nothing is missing.
    bool whole() const {
        return gaps.empty() && lostMarks == 0 && lostMethodTexts == 0 && !lostTexts && badFiles.empty();
    }
    /// Axes that show the whole log.
    AxisValues axes() const;
};

/// Reads the log in the directory, of any run and instance. The path may end in a separator.
RecoveredLog readRunningLog(const QString &directory, FileOperations &operations = FileOperations::system());

/// The result of a quick look at a directory. It ends at the first sample or mark, and searches at most 4 MiB in one
/// pass over a damaged file. Each value takes precedence over those before it.
enum class LogFinding {
    Nothing, ///< no log, or one that never held a sample or a mark
    Damage,  ///< damage, and neither a sample nor a mark
    Log,     ///< a sample or a mark, lost samples, or more damage than a quick look searches
    Unread   ///< a file that cannot be read at this moment, or by this program
};
LogFinding findRunningLog(const QString &directory, FileOperations &operations = FileOperations::system());

} // namespace ostrel
