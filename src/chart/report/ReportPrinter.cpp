// SPDX-License-Identifier: MIT
#include "chart/report/ReportPrinter.h"

#include <QBuffer>
#include <QPdfWriter>

namespace ostrel {

namespace {

constexpr QLatin1String programName("Ostrel MS");

} // namespace

std::optional<QByteArray> reportAsPdf(const QPageLayout &paper, const ReportContents &contents,
                                      const ReportOptions &options) {
    QByteArray document;
    QBuffer buffer(&document);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(contents.data.title);
    writer.setCreator(programName);
    writer.setPageLayout(paper);
    if (!paintReport(writer, contents, options))
        return std::nullopt;
    return document;
}

bool printReport(const ReportPrinter &printer, const ReportContents &contents, const ReportOptions &options) {
    const std::optional<QByteArray> document = reportAsPdf(printer.paper(), contents, options);
    return document && (document->isEmpty() || printer.print(*document, contents.data.title));
}

} // namespace ostrel
