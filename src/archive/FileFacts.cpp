// SPDX-License-Identifier: MIT
#include "archive/FileFacts.h"

#include "archive/Facts.h"
#include "archive/RunFile.h"
#include "chart/files/ProvenanceJson.h"
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

QString dateInWords(const QDateTime &date) { return date.isValid() ? isoDate(date) : "unknown"; }

/// Only what is known.
void tellProvenance(Lines &out, const Provenance &provenance) {
    std::vector<Fact> facts;
    const auto add = [&](const char *name, const QString &words) {
        if (!words.isEmpty())
            facts.push_back(textFact(name, "", words));
    };
    add("Identity", provenance.identity);
    add("System", provenance.system);
    add("Device", provenance.device);
    add("Recorded by", provenance.program);
    const auto minutes = [](double value) { return QString::number(value, 'f', 3); };
    if (provenance.parent)
        add("Stretch of", QString("%1, minutes %2 to %3")
                              .arg(provenance.parent->identity.isEmpty() ? "a run" : provenance.parent->identity,
                                   minutes(provenance.parent->from), minutes(provenance.parent->to)));
    for (const Provenance::Stretch &stretch : provenance.stretches)
        add("Recorded", QString("%1 to %2, minutes %3 to %4")
                            .arg(dateInWords(stretch.begun), dateInWords(stretch.ended), minutes(stretch.from),
                                 minutes(stretch.to)));
    for (const Provenance::ClockStep &step : provenance.clockSteps)
        add("Clock set", QString("by %1 seconds at minute %2").arg(step.seconds, 0, 'f', 1).arg(minutes(step.minutes)));
    for (const Provenance::Save &save : provenance.history)
        add("History", QString("%1 %2: %3").arg(dateInWords(save.saved), save.program, save.change));
    tellFacts(out, facts);
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
        object["provenance"] = file.run.provenance.empty() ? QJsonValue() : toJson(file.run.provenance);
        call.out.tell(QJsonDocument(object));
        return Good;
    }
    tellFacts(call.out, facts);
    tellProvenance(call.out, file.run.provenance);
    for (const EventMark &mark : file.run.marks)
        call.out.tell(QString(16, ' ') + QString("%1 min  ").arg(mark.time, 10, 'f', 3) + mark.label);
    return Good;
}

} // namespace ostrel
