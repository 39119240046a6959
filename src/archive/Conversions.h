// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// The text file for a spreadsheet; the options are those of the recorder's export window.
void declareText(QCommandLineParser &line);
ExitCode text(const ArchiveCall &call);

/// The printed report as a PDF file.
void declareReport(QCommandLineParser &line);
ExitCode pdf(const ArchiveCall &call);

} // namespace ostrel
