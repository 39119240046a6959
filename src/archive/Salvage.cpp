// SPDX-License-Identifier: MIT
#include "archive/Salvage.h"

#include "archive/RunFile.h"
#include "archive/RunningLogs.h"
#include "chart/files/SaveNote.h"

#include <QFileInfo>

namespace ostrel {

namespace {

struct Salvaged {
    ChartData run;
    AxisValues axes;
    QStringList missing;
};

/// The run has nothing worth saving.
bool isEmpty(const ChartData &run) {
    return run.samples.size() == 0 && run.marks.empty() && run.methodTexts.empty() && run.notes.isEmpty();
}

/// The parts that the file had and that could not be read.
QStringList missingOf(const ChartFileLosses &losses, const ChartData &run) {
    const qint64 end = run.samples.size();
    QStringList missing = inWords(losses.gaps, end);
    if (losses.openEnd)
        missing << QString("whatever the run held from minute %1 on").arg(minuteOf(end));
    tellLost(missing, losses.marks, "event marks");
    tellLost(missing, losses.methodTexts, "method texts");
    const std::pair<bool, const char *> parts[] = {{losses.title, "the title"},
                                                   {losses.axes, "the axes"},
                                                   {losses.notes, "the notes"},
                                                   {losses.provenance, "where the run comes from"}};
    for (const auto &[lost, what] : parts) {
        if (lost)
            missing << what;
    }
    return missing;
}

Salvaged fromFile(const QString &path, Lines &out) {
    Salvaged salvaged;
    const ChartFileReport report = salvageChartFile(path, salvaged.run, salvaged.axes);
    const QString finding = path + ": " + describe(report);
    // A disk may fail far behind the beginning of the file; the part before that is kept.
    const bool unreadable = report.fault == ChartFileFault::Unreadable && isEmpty(salvaged.run);
    if (unreadable || report.fault == ChartFileFault::NotAChart || report.fault == ChartFileFault::NewerVersion)
        throw EarlyEnd{Failed, finding};
    salvaged.missing = missingOf(report.losses, salvaged.run);
    out.tell(finding);
    return salvaged;
}

Salvaged fromDirectory(const QString &path, Lines &out) {
    RecoveredLog log = readRunningLog(path);
    Salvaged salvaged{.run = {}, .axes = log.axes(), .missing = missingOf(log)};
    salvaged.run = std::move(log.data);
    if (isEmpty(salvaged.run) && salvaged.missing.isEmpty())
        throw EarlyEnd{Failed, path + ": holds no running log"};
    out.tell(path + ": a running log");
    return salvaged;
}

QString butTitle(const QString &title) { return title.isEmpty() ? title : QString(" but the title \"%1\"").arg(title); }

quint32 kindOf(const QString &path) {
    if (path.endsWith(".chd", Qt::CaseInsensitive))
        return dataFile;
    if (path.endsWith(".chl", Qt::CaseInsensitive))
        return logFile;
    throw EarlyEnd{Misused, path + ": a name ends in .chd for a data file, in .chl for a log file"};
}

} // namespace

ExitCode salvage(const ArchiveCall &call) {
    const QString from = call.operand(0);
    const QString to = call.operand(1);
    const quint32 kind = kindOf(to);
    mayWrite(call, from, to);
    Salvaged salvaged = QFileInfo(from).isDir() ? fromDirectory(from, call.out) : fromFile(from, call.out);
    ChartData &run = salvaged.run;
    if (!isEmpty(run)) {
        noteSave(run.provenance, "salvaged");
        written(to, saveChartFile(to, kind, run, salvaged.axes));
        call.out.tell(to + QString(": %1 samples, ").arg(run.samples.size()) + duration(run.lastTime()) +
                      QString(", %1 event marks").arg(run.marks.size()));
    }
    for (const QString &what : salvaged.missing)
        call.out.tell("Missing: " + what);
    if (isEmpty(run))
        throw EarlyEnd{Failed, from + ": nothing is left to save" + butTitle(run.title)};
    return salvaged.missing.isEmpty() ? Good : Partial;
}

} // namespace ostrel
