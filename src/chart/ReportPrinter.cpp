// SPDX-License-Identifier: MIT
#include "chart/ReportPrinter.h"

#include "files/DurableFile.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>

namespace {

constexpr int longestJobName = 100; // a spooler may refuse a longer one, and Qt would not tell
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

bool printReport(QPrinter &printer, const ReportContents &contents, const ReportOptions &options) {
    if (printer.outputFormat() == QPrinter::NativeFormat) {
        printer.setDocName(contents.data.title.simplified().left(longestJobName));
        printer.setCreator(programName);
        // Qt does not tell when a job is not taken, so whoever takes it must be there.
        return QPrinterInfo::availablePrinterNames().contains(printer.printerName()) &&
               paintReport(printer, contents, options);
    }
    if (printer.outputFileName().isEmpty())
        return false; // there is no printer, and no file was chosen in its place
    // Into memory first: Qt takes no notice of a disk that is full.
    const std::optional<QByteArray> document = reportAsPdf(printer.pageLayout(), contents, options);
    return document && (document->isEmpty() || !replaceFile(printer.outputFileName(), *document));
}
