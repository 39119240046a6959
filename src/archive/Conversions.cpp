// SPDX-License-Identifier: MIT
#include "archive/Conversions.h"

#include "archive/RunFile.h"
#include "chart/files/ChartRecords.h"
#include "chart/report/ReportPrinter.h"
#include "chart/table/ExportedPoints.h"
#include "chart/table/TextExport.h"
#include "files/DurableFile.h"

#include <QDateTime>
#include <QFileInfo>
#include <QPageLayout>

#include <algorithm>

namespace ostrel {

namespace {

template <typename Options>
struct Content {
    const char *name;
    bool Options::*wanted;
};

/// Switches off the parts named by --without, a list with commas.
template <typename Options, std::size_t count>
void leaveOut(const QCommandLineParser &line, Options &options, const Content<Options> (&contents)[count]) {
    for (const QString &name : line.value("without").split(',', Qt::SkipEmptyParts)) {
        const auto *const content =
            std::find_if(std::begin(contents), std::end(contents), [&](const auto &row) { return name == row.name; });
        if (content == std::end(contents))
            throw EarlyEnd{Misused, QString("--without does not know \"%1\"").arg(name)};
        options.*content->wanted = false;
    }
}

double numberOf(const QCommandLineParser &line, const char *option, double least, double most) {
    bool good = false;
    const double value = line.value(option).toDouble(&good);
    if (!good || !(value >= least && value <= most))
        throw EarlyEnd{Misused, QString("--%1 is a number from %2 to %3").arg(option).arg(least).arg(most, 0, 'g', 7)};
    return value;
}

/// Minutes.
struct Stretch {
    float from;
    float to;
};

Stretch stretchAsked(const QCommandLineParser &line) {
    constexpr double longest = 1000000;
    const double from = numberOf(line, "from", 0, longest);
    const double to = line.isSet("to") ? numberOf(line, "to", 0, longest) : longest;
    if (from > to)
        throw EarlyEnd{Misused, "--from is behind --to"};
    return {static_cast<float>(from), static_cast<float>(to)};
}

/// The parts of a report.
struct ReportParts {
    bool chromatogram = true;
    bool uv = true;
    bool cond = true;
    bool events = true;
    bool method = true;
    bool notes = true;

    ReportOptions options() const {
        return {chromatogram, method, notes, (events ? 1 : 0) | (cond ? 2 : 0) | (uv ? 4 : 0)};
    }
};

constexpr const char *methodPlaces[] = {"before", "after", "column"};

MethodPosition methodPosition(const QString &place) {
    const auto *const found =
        std::find_if(std::begin(methodPlaces), std::end(methodPlaces), [&](const char *name) { return place == name; });
    if (found == std::end(methodPlaces))
        throw EarlyEnd{Misused, "--method is before, after or column"};
    return static_cast<MethodPosition>(found - std::begin(methodPlaces));
}

} // namespace

void declareText(QCommandLineParser &line) {
    line.addOptions({
        {"from", "First minute (0).", "minutes", "0"},
        {"to", "Last minute (that of the last sample).", "minutes"},
        {"rate", "Rows a second, 0.01 to 5 (1); each is the mean of its time.", "number", "1"},
        {"without", "Leave out: uv, conductivity, events, notes, method, with commas between.", "what"},
        {"method", "Where the method is placed: before or after the data, or in a column (before).", "place", "before"},
    });
    declareOverwrite(line);
}

ExitCode text(const ArchiveCall &call) {
    static constexpr Content<ExportOptions> contents[] = {{"uv", &ExportOptions::uv},
                                                          {"conductivity", &ExportOptions::cond},
                                                          {"events", &ExportOptions::events},
                                                          {"notes", &ExportOptions::notes},
                                                          {"method", &ExportOptions::method}};
    ExportOptions options;
    leaveOut(call.line, options, contents);
    if (!(options.uv || options.cond || options.events || options.notes || options.method))
        throw EarlyEnd{Misused, "--without leaves nothing for the file"};
    options.position = methodPosition(call.line.value("method"));
    options.sampleRate = static_cast<float>(numberOf(call.line, "rate", 0.01, 5));
    const Stretch asked = stretchAsked(call.line);
    mayConvertInto(call, call.operand(0), call.operand(1));

    const RunFile file = wholeFile(call.operand(0));
    const float last = file.run.lastTime();
    if (asked.from > last)
        throw EarlyEnd{Misused, QString("--from is behind the end of the run, which takes %1").arg(duration(last))};
    options.from = asked.from;
    options.to = std::min(asked.to, last);
    options.pointCount =
        static_cast<qint32>(std::max(0.0, exportedPoints(options.from, options.to, options.sampleRate)));
    options.sourceFile = call.operand(0);
    options.exported = QDateTime::currentDateTime();
    written(call.operand(1), exportText(call.operand(1), file.run, options));
    return Good;
}

void declareReport(QCommandLineParser &line) {
    line.addOptions({
        {"title", "Title of the report in place of the run's own.", "text"},
        {"as-saved", "Show the stretch of time that was on the screen, in place of the whole run."},
        {"without", "Leave out: chromatogram, uv, conductivity, events, method, notes, with commas between.", "what"},
        {"paper", "Size of the paper: a4 or letter (a4).", "size", "a4"},
    });
    declareOverwrite(line);
}

ExitCode pdf(const ArchiveCall &call) {
    static constexpr Content<ReportParts> contents[] = {{"chromatogram", &ReportParts::chromatogram},
                                                        {"uv", &ReportParts::uv},
                                                        {"conductivity", &ReportParts::cond},
                                                        {"events", &ReportParts::events},
                                                        {"method", &ReportParts::method},
                                                        {"notes", &ReportParts::notes}};
    ReportParts parts;
    leaveOut(call.line, parts, contents);
    const QString paper = call.line.value("paper");
    if (paper != "a4" && paper != "letter")
        throw EarlyEnd{Misused, "--paper is a4 or letter"};
    mayConvertInto(call, call.operand(0), call.operand(1));

    RunFile file = wholeFile(call.operand(0));
    if (call.line.isSet("title"))
        file.run.title = call.line.value("title");
    if (!call.line.isSet("as-saved")) {
        file.axes.timeMin = 0;
        file.axes.timeMax = file.run.lastTime();
    }
    const QPageLayout sheet(QPageSize(paper == "a4" ? QPageSize::A4 : QPageSize::Letter), QPageLayout::Landscape, {});
    const std::optional<QByteArray> document = reportAsPdf(
        sheet, {file.run, file.axes, call.operand(0), QDateTime::currentDateTime(), sumOf(file.run.samples)},
        parts.options());
    if (!document)
        throw EarlyEnd{Failed, call.operand(1) + ": cannot be painted"};
    if (document->isEmpty())
        throw EarlyEnd{Misused, "--without leaves nothing for the report"};
    written(call.operand(1), replaceFile(call.operand(1), *document));
    return Good;
}

} // namespace ostrel
