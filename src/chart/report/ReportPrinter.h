// SPDX-License-Identifier: MIT
#pragma once

#include "chart/report/ReportPages.h"

#include <QByteArray>
#include <QPageLayout>
#include <QString>

#include <functional>
#include <optional>

namespace ostrel {

/// The report as a PDF document with its fonts and with text that can be searched. Empty when nothing is chosen;
/// nullopt when it cannot be painted.
std::optional<QByteArray> reportAsPdf(const QPageLayout &paper, const ReportContents &contents,
                                      const ReportOptions &options);

/// How reports are printed.
struct ReportPrinter {
    /// The paper that the next report is made for.
    std::function<QPageLayout()> paper;
    /// Prints one copy, a PDF document, as a job of this name. False when that fails.
    std::function<bool(const QByteArray &document, const QString &name)> print;
};

/// Prints one copy. False when painting or printing fails. With nothing chosen nothing is printed, which is success.
bool printReport(const ReportPrinter &printer, const ReportContents &contents, const ReportOptions &options);

} // namespace ostrel
