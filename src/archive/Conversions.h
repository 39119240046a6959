// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// Writes the text file for a spreadsheet, with the options of the recorder's export window.
void declareText(QCommandLineParser &line);
ExitCode text(const ArchiveCall &call);

/// Writes every sample as a table with commas.
ExitCode csv(const ArchiveCall &call);

/// Writes minutes and values of one signal.
void declareXy(QCommandLineParser &line);
ExitCode xy(const ArchiveCall &call);

/// Writes the printed report as a PDF file.
void declareReport(QCommandLineParser &line);
ExitCode pdf(const ArchiveCall &call);

} // namespace ostrel
