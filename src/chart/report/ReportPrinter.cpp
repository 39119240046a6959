// SPDX-License-Identifier: MIT
#include "chart/report/ReportPrinter.h"

#include "chart/report/PdfDetails.h"

#include <QBuffer>
#include <QPdfWriter>

namespace ostrel {

std::optional<QByteArray> reportAsPdf(const QPageLayout &paper, const ReportContents &contents,
                                      const ReportOptions &options) {
    Report report(paper, contents, options);
    if (report.pages() == 0)
        return QByteArray();
    PdfDetails details{contents.data.title, contents.data.provenance.system, contents.printed};
    for (const Report::Part &part : report.parts())
        details.bookmarks.push_back({part.name, part.page});
    QByteArray document;
    QBuffer buffer(&document);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        describe(writer, details);
        if (!report.paint(writer))
            return std::nullopt;
    }
    return withDetails(document, details);
}

bool printReport(const ReportPrinter &printer, const ReportContents &contents, const ReportOptions &options) {
    const std::optional<QByteArray> document = reportAsPdf(printer.paper(), contents, options);
    return document && (document->isEmpty() || printer.print(*document, contents.data.title));
}

} // namespace ostrel
