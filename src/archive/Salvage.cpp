// SPDX-License-Identifier: MIT
#include "archive/Salvage.h"

#include "archive/RunFile.h"
#include "archive/RunningLogs.h"

#include <QFileInfo>

#include <algorithm>

namespace ostrel {

namespace {

struct Salvaged {
    ChartData run;
    AxisValues axes;
    QStringList missing;
};

QString minutes(double value) { return QString::number(value, 'f', 2); }

/// The run has nothing worth saving.
bool isEmpty(const ChartData &run) {
    return run.samples.size() == 0 && run.marks.empty() && run.methodTexts.empty() && run.notes.isEmpty();
}

void tellLost(QStringList &missing, quint64 lost, const char *what) {
    if (lost > 0)
        missing << QString("%1 %2").arg(lost).arg(what);
}

/// Adds the parts that the file had, by its own counts, and that could not be read.
void tellMissing(Salvaged &salvaged, const ChartFileReport &report) {
    const ChartData &run = salvaged.run;
    const double end = ChartData::timeOf(run.samples.size());
    if (!report.counts) {
        salvaged.missing << QString("whatever the run held from minute %1 on").arg(minutes(end));
        return;
    }
    const auto beyond = [](quint64 held, std::size_t kept) { return held > kept ? held - kept : 0; };
    if (const quint64 lost = beyond(report.counts->samples, static_cast<std::size_t>(run.samples.size())); lost > 0)
        salvaged.missing << QString("minutes %1 to %2 (%3 samples)")
                                .arg(minutes(end), minutes(ChartData::timeOf(qint64(report.counts->samples) - 1)))
                                .arg(lost);
    tellLost(salvaged.missing, beyond(report.counts->marks, run.marks.size()), "event marks");
    tellLost(salvaged.missing, beyond(report.counts->methodTexts, run.methodTexts.size()), "method texts");
    if (salvaged.missing.isEmpty())
        salvaged.missing << "title, notes or axes, perhaps";
}

Salvaged fromFile(const QString &path, Lines &out) {
    Salvaged salvaged;
    const ChartFileReport report = salvageChartFile(path, salvaged.run, salvaged.axes);
    const QString finding = path + ": " + describe(report);
    // A disk may fail far behind the beginning of the file; the part before that is kept.
    const bool unreadable = report.fault == ChartFileFault::Unreadable && isEmpty(salvaged.run);
    if (unreadable || report.fault == ChartFileFault::NotAChart || report.fault == ChartFileFault::NewerVersion)
        throw EarlyEnd{Failed, finding};
    if (report.lost)
        tellMissing(salvaged, report);
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
    const Salvaged salvaged = QFileInfo(from).isDir() ? fromDirectory(from, call.out) : fromFile(from, call.out);
    const ChartData &run = salvaged.run;
    if (!isEmpty(run)) {
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
