// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/ChartRecords.h"
#include "files/FileOperations.h"

#include <QString>

#include <optional>
#include <system_error>

namespace ostrel {

/// Data files (.chd) and log files (.chl): one run each, with its axes, as docs/file-format.md lays it down.

inline constexpr quint32 dataFile = fourLetters("DATA");
inline constexpr quint32 logFile = fourLetters("LOG ");
inline constexpr quint32 chartFileVersion = 1; ///< that is written; older ones are read too

/// Puts the run into a file of this kind, in place of an old one. No error means that it is on the disk; otherwise the
/// old file is as it was.
std::error_code saveChartFile(const QString &path, quint32 kind, const ChartData &run, const AxisValues &axes,
                              FileOperations &operations = FileOperations::system());
/// The same, of kind `dataFile`, with what the time axis shows alone: its first sample is at time 0 and marks and
/// method texts move with it. All method texts go along, those from before and after the stretch to its ends.
std::error_code saveChartStretch(const QString &path, const ChartData &run, const AxisValues &axes,
                                 FileOperations &operations = FileOperations::system());

enum class ChartFileFault {
    None,
    Unreadable,   ///< the operating system says why
    NotAChart,    ///< no file of a chart, or another kind of one
    NewerVersion, ///< than this program knows
    Truncated,    ///< all is well up to where the file ends
    Damaged       ///< without a head when it is damaged in that
};

/// What a reading found.
struct ChartFileReport {
    ChartFileFault fault = ChartFileFault::None;
    std::error_code error; ///< of an unreadable file
    /// In the file, where the first fault begins: the end of a file that is cut off, or the first of the zeros there;
    /// otherwise the beginning of the damaged head or record, or of what follows the last record.
    quint64 position = 0;
    std::optional<RecordHead> record;  ///< the damaged one, when its own head is whole
    bool trailing = false;             ///< nothing is wrong but that the file goes on behind its end
    bool lost = false;                 ///< a record is damaged or missing
    std::optional<FileHead> head;      ///< of any file of a chart
    std::optional<ChartCounts> counts; ///< what the file once held, when its end can be read

    bool good() const { return fault == ChartFileFault::None; }
};

/// The file begins with the mark of the chart's files, of the running log's too, whatever has become of the rest. False
/// for what cannot be read.
bool bearsChartMark(const QString &path);

/// Replaces run and axes by what a data file or a log file holds. With any fault both stay as they are.
/// Axes that no chart can show (not finite, reversed, beyond all measure) come back as those of a new chart.
ChartFileReport loadChartFile(const QString &path, ChartData &run, AxisValues &axes,
                              FileOperations &operations = FileOperations::system());

/// The same for a damaged file: keeps every sample up to the first that is missing, and every mark and text that is
/// whole, also behind a damaged head. The report tells the first fault; nothing is handed over of files that are no
/// chart's, or unreadable from the beginning.
ChartFileReport salvageChartFile(const QString &path, ChartData &run, AxisValues &axes,
                                 FileOperations &operations = FileOperations::system());

} // namespace ostrel
