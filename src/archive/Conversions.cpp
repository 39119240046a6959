// SPDX-License-Identifier: MIT
#include "archive/Conversions.h"

#include "archive/NewFiles.h"
#include "archive/RunFile.h"
#include "archive/Stretch.h"
#include "chart/files/ChartRecords.h"
#include "chart/report/ReportPrinter.h"
#include "chart/table/ExportedPoints.h"
#include "chart/table/SampleTables.h"
#include "chart/table/TextExport.h"
#include "files/DurableFile.h"

#include <QDateTime>
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
    declareStretch(line);
    line.addOptions({
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
    const auto convert = [&](const QString &from, const QString &to) {
        const RunFile file = wholeFile(from);
        const float last = file.run.lastTime();
        beginWithin(asked, from, file.run);
        ExportOptions chosen = options;
        chosen.from = asked.from;
        chosen.to = std::min(asked.to.value_or(last), last);
        chosen.pointCount =
            static_cast<qint32>(std::max(0.0, exportedPoints(chosen.from, chosen.to, chosen.sampleRate)));
        chosen.sourceFile = from;
        chosen.exported = QDateTime::currentDateTime();
        written(to, exportText(to, file.run, chosen));
    };
    return convertEach(call, {".txt"}, convert);
}

ExitCode csv(const ArchiveCall &call) {
    return convertEach(call, {".csv"}, [](const QString &from, const QString &to) {
        const RunFile file = wholeFile(from);
        written(to, exportCsv(to, file.run));
    });
}

void declareXy(QCommandLineParser &line) {
    line.addOption({"signal", "The values: uv or conductivity (uv).", "which", "uv"});
    declareOverwrite(line);
}

ExitCode xy(const ArchiveCall &call) {
    const QString name = call.line.value("signal");
    if (name != "uv" && name != "conductivity")
        throw EarlyEnd{Misused, "--signal is uv or conductivity"};
    const Signal signal = name == "uv" ? Signal::Uv : Signal::Cond;
    return convertEach(call, {".txt"}, [signal](const QString &from, const QString &to) {
        const RunFile file = wholeFile(from);
        written(to, exportXy(to, file.run, signal));
    });
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
    if (!(parts.chromatogram || parts.method || parts.notes))
        throw EarlyEnd{Misused, "--without leaves nothing for the report"};
    const QString paper = call.line.value("paper");
    if (paper != "a4" && paper != "letter")
        throw EarlyEnd{Misused, "--paper is a4 or letter"};
    const QPageLayout sheet(QPageSize(paper == "a4" ? QPageSize::A4 : QPageSize::Letter), QPageLayout::Landscape, {});
    const auto convert = [&](const QString &from, const QString &to) {
        RunFile file = wholeFile(from);
        if (call.line.isSet("title"))
            file.run.title = call.line.value("title");
        if (!call.line.isSet("as-saved")) {
            file.axes.timeMin = 0;
            file.axes.timeMax = file.run.lastTime();
        }
        const std::optional<QByteArray> document = reportAsPdf(
            sheet, {file.run, file.axes, from, QDateTime::currentDateTime(), sumOf(file.run.samples)}, parts.options());
        if (!document)
            throw EarlyEnd{Failed, to + ": cannot be painted"};
        written(to, replaceFile(to, *document));
    };
    return convertEach(call, {".pdf"}, convert);
}

} // namespace ostrel
