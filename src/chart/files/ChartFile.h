// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/ChartRecords.h"
#include "files/FileOperations.h"

#include <QString>

#include <optional>
#include <system_error>

namespace ostrel {

/// Data files (.chd) and log files (.chl) hold one run each, with its axes. docs/file-format.md describes them.

inline constexpr quint32 dataFile = fourLetters("DATA");
inline constexpr quint32 logFile = fourLetters("LOG ");
inline constexpr quint32 chartFileVersion = 2; ///< the version that is written; older ones are read too

/// Writes the run to a file of this kind in place of an old one. No error means that it is on the disk. After an error
/// the path has the old file, or the whole new one when only the flush of the folder failed.
std::error_code saveChartFile(const QString &path, quint32 kind, const ChartData &run, const AxisValues &axes,
                              FileOperations &operations = FileOperations::system());
/// Writes only the part that the time axis shows, as a `dataFile`. Its first sample gets time 0; marks and method texts
/// move with it. All method texts are kept; those outside the part get the time of its nearer end. The file is a run of
/// its own, whose parent is `run`.
std::error_code saveChartStretch(const QString &path, const ChartData &run, const AxisValues &axes,
                                 FileOperations &operations = FileOperations::system());

/// What is missing of a damaged file.
struct ChartFileLosses {
    std::vector<SampleGap> gaps;
    quint64 marks = 0;
    quint64 methodTexts = 0;
    bool title = false;
    bool axes = false;
    bool notes = false;
    bool provenance = false;
    bool openEnd = false; ///< nothing tells whether samples, marks or texts follow those that were read

    bool any() const {
        return !gaps.empty() || marks > 0 || methodTexts > 0 || title || axes || notes || provenance || openEnd;
    }
};

enum class ChartFileFault {
    None,
    Unreadable,   ///< `error` has the reason
    NotAChart,    ///< not a chart file, or one of another kind
    NewerVersion, ///< newer than this program knows
    Truncated,    ///< intact up to the end of the file, which comes too early
    Damaged       ///< `head` is not set when the header itself is damaged
};

/// The result of reading a chart file.
struct ChartFileReport {
    ChartFileFault fault = ChartFileFault::None;
    std::error_code error; ///< of an unreadable file
    /// Where in the file the first fault begins: for a truncated file its end, or the first of the zeros at its end;
    /// otherwise the beginning of the damaged header or record, or of the bytes behind the last record.
    quint64 position = 0;
    std::optional<RecordHead> record; ///< the damaged one, when its header is intact
    bool trailing = false;            ///< the only fault is that bytes follow the last record
    std::optional<FileHead> head;     ///< set when the file begins with an intact one
    ChartFileLosses losses;           ///< known when the file was salvaged
    quint64 samples = 0;              ///< read before the first fault

    bool good() const { return fault == ChartFileFault::None; }
};

/// The file begins with the mark of chart files, which files of the running log have too; the rest may be damaged.
/// False when the file cannot be read.
bool bearsChartMark(const QString &path);

/// Replaces run and axes by the contents of a data file or log file. With any fault both stay as they are. An axis that
/// is not finite, not ascending or beyond a million gets the values of a new chart.
ChartFileReport loadChartFile(const QString &path, ChartData &run, AxisValues &axes,
                              FileOperations &operations = FileOperations::system());

/// The report of loadChartFile, without the run: however many samples there are, they take less than a megabyte.
/// Several threads may check files at once.
ChartFileReport checkChartFile(const QString &path, FileOperations &operations = FileOperations::system());

/// The same as loadChartFile for a damaged file, also with a damaged header: keeps every record that is intact, with
/// the times that it had. Samples that are missing in between are filled in as not-a-number, unless there are far more
/// than the file has room for. The report has the first fault. Nothing is read from a file that is not a chart's, is of
/// a newer version, or cannot be read at its beginning.
ChartFileReport salvageChartFile(const QString &path, ChartData &run, AxisValues &axes,
                                 FileOperations &operations = FileOperations::system());

} // namespace ostrel
