// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"
#include "chart/files/ChartFile.h"

namespace ostrel {

/// A run as a file holds it.
struct RunFile {
    ChartData run;
    AxisValues axes;
    ChartFileReport report;
};

/// In words: "whole", "damaged at byte 208, in record 4 (SAMP) that ends at byte 4712", ...
QString describe(const ChartFileReport &report);

/// The file, whole; otherwise ends the command.
RunFile wholeFile(const QString &path);

/// Makes sure that nothing that exists is lost: a file that is there is written over only with --overwrite, and never
/// the one that is read. Nothing is written into a directory that is read.
void declareOverwrite(QCommandLineParser &line);
void mayWrite(const ArchiveCall &call, const QString &from, const QString &to);
/// The same for what is no chart file itself: it never takes the place of one, whatever that one's name and state, nor
/// the name of one.
void mayConvertInto(const ArchiveCall &call, const QString &from, const QString &to);

/// Ends the command when writing went wrong.
void written(const QString &path, std::error_code error);

/// "12.35 minutes (0:12:21)"
QString duration(double minutes);

} // namespace ostrel
