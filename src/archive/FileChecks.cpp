// SPDX-License-Identifier: MIT
#include "archive/FileChecks.h"

#include "archive/RunFile.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <cmath>
#include <vector>

namespace {

struct Fact {
    const char *name;
    const char *key; ///< for scripts
    QJsonValue value;
    QString words; ///< for a person
};

/// Not finite in a trace without any finite value, which JSON knows as null.
QJsonValue number(double value) { return std::isfinite(value) ? QJsonValue(value) : QJsonValue(); }

Fact range(const char *name, const char *key, double from, double to, const char *unit) {
    const QString words = std::isfinite(from) ? QString("%1 to %2 %3").arg(from).arg(to).arg(unit) : QString("none");
    return {name, key, QJsonArray{number(from), number(to)}, words};
}

Fact count(const char *name, const char *key, qint64 number) { return {name, key, number, QString::number(number)}; }

Fact text(const char *name, const char *key, const QString &value) { return {name, key, value, value}; }

std::vector<Fact> factsOf(const QString &path, const RunFile &file) {
    const ChartData &run = file.run;
    const FileHead head = file.report.head.value_or(FileHead());
    const Extent extent = run.samples.extent(0, run.samples.size());
    const QDateTime saved = QDateTime::fromMSecsSinceEpoch(head.written);
    return {
        text("File", "file", path),
        text("Kind", "kind", head.kind == logFile ? "log" : "data"),
        count("Format version", "version", head.version),
        {"Saved", "saved", saved.toUTC().toString(Qt::ISODate), saved.toString("yyyy-MM-dd hh:mm:ss t")},
        {"Size", "bytes", QFileInfo(path).size(), QString("%1 bytes").arg(QFileInfo(path).size())},
        text("Title", "title", run.title),
        {"Duration", "minutes", run.lastTime(), duration(run.lastTime())},
        count("Samples", "samples", run.samples.size()),
        range("UV", "uv", extent.uvMin(), extent.uvMax(), "AU"),
        range("Conductivity", "conductivity", extent.condMin(), extent.condMax(), "mS/cm"),
        count("Event marks", "markCount", static_cast<qint64>(run.marks.size())),
        count("Method texts", "methodTexts", static_cast<qint64>(run.methodTexts.size())),
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
        QJsonObject object;
        for (const Fact &fact : facts)
            object[QLatin1String(fact.key)] = fact.value;
        object["marks"] = marksOf(file.run);
        call.out.tell(object);
        return Good;
    }
    for (const Fact &fact : facts)
        call.out.tell(QString("%1:").arg(QLatin1String(fact.name)).leftJustified(16) + fact.words);
    for (const EventMark &mark : file.run.marks)
        call.out.tell(QString(16, ' ') + QString("%1 min  ").arg(mark.time, 10, 'f', 3) + mark.label);
    return Good;
}

ExitCode check(const ArchiveCall &call) {
    ExitCode result = Good;
    for (const QString &path : call.operands) {
        ChartData run;
        AxisValues axes;
        const ChartFileReport report = loadChartFile(path, run, axes);
        call.out.tell(path + ": " + describe(report) + (report.good() ? ", " + duration(run.lastTime()) : QString()));
        if (!report.good())
            result = Failed;
        if (!call.out.deliver())
            break; // nobody learns of the others
    }
    return result;
}
