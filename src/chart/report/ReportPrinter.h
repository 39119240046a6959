// SPDX-License-Identifier: MIT
#pragma once

#include "chart/report/ReportPages.h"

#include <QByteArray>
#include <QPageLayout>
#include <QString>

#include <functional>
#include <optional>

namespace ostrel {

/// The report as a PDF document: text that can be searched, its fonts with it. Empty when nothing is chosen, none when
/// it cannot be painted.
std::optional<QByteArray> reportAsPdf(const QPageLayout &paper, const ReportContents &contents,
                                      const ReportOptions &options);

/// Where reports go.
struct ReportPrinter {
    /// The paper that the next report is made for.
    std::function<QPageLayout()> paper;
    /// Takes one copy, a PDF document, under the name of its job. False when it is not taken.
    std::function<bool(const QByteArray &document, const QString &name)> print;
};

/// Prints one copy. False when it cannot be painted or is not taken; with nothing chosen nothing is printed, which is
/// good.
bool printReport(const ReportPrinter &printer, const ReportContents &contents, const ReportOptions &options);

} // namespace ostrel
