// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"
#include "chart/files/ChartFile.h"

namespace ostrel {

/// A run as it is stored in a file.
struct RunFile {
    ChartData run;
    AxisValues axes;
    ChartFileReport report;
};

/// In words: "whole", "damaged at byte 208, in record 4 (SAMP) that ends at byte 4712", ...
QString describe(const ChartFileReport &report);

/// Loads an undamaged file; any fault ends the command.
RunFile wholeFile(const QString &path);

/// Protects existing files: one is overwritten only with --overwrite, and never the one that is read. Nothing is
/// written into a directory that is read.
void declareOverwrite(QCommandLineParser &line);
void mayWrite(const ArchiveCall &call, const QString &from, const QString &to);
/// The same for output that is not a chart file: it never replaces a chart file, even a damaged or renamed one, and
/// never gets the name of one.
void mayConvertInto(const ArchiveCall &call, const QString &from, const QString &to);

/// Ends the command when `error` says that writing has failed.
void written(const QString &path, std::error_code error);

/// A line for each: "minutes 3.41 to 10.24 (2048 samples)". `end`: how many samples the run has as it was read.
QStringList inWords(const std::vector<SampleGap> &gaps, qint64 end);

/// "3 event marks", if any are lost.
void tellLost(QStringList &missing, quint64 lost, const char *what);

/// "3.41", the time of a sample.
QString minuteOf(qint64 sample);
/// "12.35 minutes (0:12:21)"
QString duration(double minutes);

} // namespace ostrel
