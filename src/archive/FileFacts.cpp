// SPDX-License-Identifier: MIT
#include "archive/FileFacts.h"

#include "archive/Facts.h"
#include "archive/RunFile.h"
#include "chart/run/IsoDate.h"

#include <QFileInfo>
#include <QJsonArray>

#include <cmath>
#include <vector>

namespace ostrel {

namespace {

/// null for a number that is not finite: the limits of a trace without any finite value.
QJsonValue number(double value) { return std::isfinite(value) ? QJsonValue(value) : QJsonValue(); }

Fact range(const char *name, const char *key, double from, double to, const char *unit) {
    const QString words = std::isfinite(from) ? QString("%1 to %2 %3").arg(from).arg(to).arg(unit) : QString("none");
    return {name, key, QJsonArray{number(from), number(to)}, words};
}

std::vector<Fact> factsOf(const QString &path, const RunFile &file) {
    const ChartData &run = file.run;
    const FileHead head = file.report.head.value_or(FileHead());
    const Extent extent = run.samples.extent(0, run.samples.size());
    const QDateTime saved = QDateTime::fromMSecsSinceEpoch(head.written);
    return {
        textFact("File", "file", path),
        textFact("Kind", "kind", head.kind == logFile ? "log" : "data"),
        countFact("Format version", "version", head.version),
        textFact("Saved", "saved", isoDate(saved)),
        {"Size", "bytes", QFileInfo(path).size(), QString("%1 bytes").arg(QFileInfo(path).size())},
        textFact("Title", "title", run.title),
        {"Duration", "minutes", run.lastTime(), duration(run.lastTime())},
        countFact("Samples", "samples", run.samples.size()),
        range("UV", "uv", extent.uvMin(), extent.uvMax(), "AU"),
        range("Conductivity", "conductivity", extent.condMin(), extent.condMax(), "mS/cm"),
        countFact("Event marks", "markCount", static_cast<qint64>(run.marks.size())),
        countFact("Method texts", "methodTexts", static_cast<qint64>(run.methodTexts.size())),
        {"Notes", "notes", run.notes, run.notes.isEmpty() ? "none" : QString("%1 characters").arg(run.notes.size())},
    };
}

QJsonArray marksOf(const ChartData &run) {
    QJsonArray marks;
    for (const EventMark &mark : run.marks)
        marks.append(QJsonObject{{"label", mark.label}, {"minutes", number(mark.time)}});
    return marks;
}

} // namespace

void declareInfo(QCommandLineParser &line) {
    line.addOption({"json", "Answer as a JSON object, with all event marks and the notes."});
}

ExitCode info(const ArchiveCall &call) {
    const RunFile file = wholeFile(call.operand(0));
    const std::vector<Fact> facts = factsOf(call.operand(0), file);
    if (call.line.isSet("json")) {
        QJsonObject object = objectOf(facts);
        object["marks"] = marksOf(file.run);
        call.out.tell(QJsonDocument(object));
        return Good;
    }
    tellFacts(call.out, facts);
    for (const EventMark &mark : file.run.marks)
        call.out.tell(QString(16, ' ') + QString("%1 min  ").arg(mark.time, 10, 'f', 3) + mark.label);
    return Good;
}

} // namespace ostrel
