// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ReportPages.h"

#include <QByteArray>

#include <optional>

class QPageLayout;
class QPrinter;

/// The report as a PDF document: text that can be searched, its fonts with it. Empty when nothing is chosen, none when
/// it cannot be painted.
std::optional<QByteArray> reportAsPdf(const QPageLayout &paper, const ReportContents &contents,
                                      const ReportOptions &options);

/// Prints one copy where the printer was told to: on paper, or into a PDF file, which is replaced once the disk has all
/// of the new one. False when that fails; a printer that is neither set up nor the computer's default fails too.
bool printReport(QPrinter &printer, const ReportContents &contents, const ReportOptions &options);
