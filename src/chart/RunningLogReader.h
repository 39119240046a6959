// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartData.h"
#include "chart/Scale.h"

#include <QString>

#include <system_error>
#include <vector>

/// What was found of a running log, put together: all whole records of all data files in a directory. What a failed
/// call or a power cut left half-written at the end of a file is no fault; what is missing of what follows it is.
struct RecoveredLog {
    /// Samples that no file holds. Where so many are missing that it cannot be true the times behind them move up;
    /// otherwise the gap holds samples that are not a number.
    struct Gap {
        double at;     ///< minutes in `data`
        double length; ///< minutes
        bool filled;
    };
    struct BadFile {
        QString path;
        std::error_code error; ///< bad_message: not whole at its head; not_supported: of a newer version
    };

    ChartData data; ///< several runs of the program stand one behind the other
    std::vector<Gap> gaps;
    quint64 lostMarks = 0;
    quint64 lostMethodTexts = 0;
    std::vector<BadFile> badFiles;

    /// Nothing that would be worth a file.
    bool empty() const { return data.samples.size() == 0 && data.marks.empty(); }
    /// Nothing is missing.
    bool whole() const { return gaps.empty() && lostMarks == 0 && lostMethodTexts == 0 && badFiles.empty(); }
    /// To show all of it.
    AxisValues axes() const;
};

/// Reads the log, of whichever run and instance. The path comes with or without a separator at its end.
RecoveredLog readRunningLog(const QString &directory);
/// What readRunningLog finds would not be empty.
bool runningLogStands(const QString &directory);
