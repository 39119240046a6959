// SPDX-License-Identifier: MIT
#include "archive/RunFile.h"

#include "chart/files/RunningLogFiles.h"

#include <QFile>
#include <QFileInfo>

#include <cmath>
#include <filesystem>
#include <string>

namespace ostrel {

namespace {

QString words(std::error_code error) { return QString::fromStdString(error.message()); }

QString letters(quint32 kind) {
    return QString::fromLatin1(reinterpret_cast<const char *>(&kind), sizeof kind).trimmed();
}

QString unreadable(const ChartFileReport &report) {
    const QString from = report.position > 0 ? QString(" from byte %1 on").arg(report.position) : QString();
    return "cannot be read" + from + ": " + words(report.error);
}

QString damaged(const ChartFileReport &report) {
    if (report.trailing)
        return QString("goes on behind its end at byte %1").arg(report.position);
    QString place = QString("damaged at byte %1").arg(report.position);
    if (!report.head)
        return place + ", in its head";
    if (!report.record)
        return place;
    const quint64 end = report.position + RecordHead::size + filledUp(report.record->length);
    return place + QString(", in record %1 (").arg(report.record->number) + letters(report.record->kind) +
           QString(") that ends at byte %1").arg(end);
}

std::filesystem::path native(const QString &path) { return QFile::encodeName(path).toStdString(); }

/// Both names lead to the same file. False when one is missing.
bool isSame(const std::filesystem::path &path, const QString &other) {
    std::error_code missing;
    return std::filesystem::equivalent(path, native(other), missing);
}

/// Refuses `to` when it is the source or lies in it. Neither `to` nor its folder need exist.
void spareSource(const QString &from, const QString &to) {
    std::error_code unknown;
    std::filesystem::path place =
        std::filesystem::weakly_canonical(std::filesystem::absolute(native(to), unknown), unknown);
    if (isSame(place, from))
        throw EarlyEnd{Misused, to + ": is the file to be read"};
    while (place.has_relative_path()) {
        place = place.parent_path();
        if (isSame(place, from))
            throw EarlyEnd{Misused, to + ": lies in the directory to be read"};
    }
}

void spareCharts(const QString &to) {
    const QFileInfo target(to);
    if (bearsChartMark(to))
        throw EarlyEnd{Failed, to + ": is a chart file; only salvage replaces one"};
    if (isNamedAsDocument(to))
        throw EarlyEnd{Failed, to + ": is the name of a chart file; only salvage makes one"};
    if (target.isFile() && !target.isReadable())
        throw EarlyEnd{Failed, to + ": cannot be read, and may be a chart file"};
}

void askForOverwrite(const ArchiveCall &call, const QString &to) {
    if (QFileInfo::exists(to) && !call.line.isSet("overwrite"))
        throw EarlyEnd{Failed, to + ": is there already; --overwrite replaces it"};
}

} // namespace

QString describe(const ChartFileReport &report) {
    switch (report.fault) {
    case ChartFileFault::None:
        return "whole";
    case ChartFileFault::Unreadable:
        return unreadable(report);
    case ChartFileFault::NotAChart:
        return "not a chart file";
    case ChartFileFault::NewerVersion:
        return QString("of a newer version (%1) than this program knows").arg(report.head ? report.head->version : 0);
    case ChartFileFault::Truncated:
        return QString("cut off at byte %1").arg(report.position);
    case ChartFileFault::Damaged:
        return damaged(report);
    }
    return {};
}

RunFile wholeFile(const QString &path) {
    RunFile file;
    file.report = loadChartFile(path, file.run, file.axes);
    if (!file.report.good())
        throw EarlyEnd{Failed, path + ": " + describe(file.report)};
    return file;
}

void declareOverwrite(QCommandLineParser &line) {
    line.addOption({"overwrite", "Replace a file of the new name, if there is one."});
}

void mayWrite(const ArchiveCall &call, const QString &from, const QString &to) {
    spareSource(from, to);
    askForOverwrite(call, to);
}

void mayConvertInto(const ArchiveCall &call, const QString &from, const QString &to) {
    spareSource(from, to);
    spareCharts(to);
    askForOverwrite(call, to);
}

void written(const QString &path, std::error_code error) {
    if (error)
        throw EarlyEnd{Failed, path + ": cannot be written: " + words(error)};
}

QStringList inWords(const std::vector<SampleGap> &gaps, qint64 end) {
    QStringList lines;
    for (const SampleGap &gap : gaps) {
        const bool movesUp = !gap.filled && gap.from < end;
        lines << QString("minutes %1 to %2 (%3 samples)%4")
                     .arg(minuteOf(gap.from), minuteOf(gap.from + gap.count - 1))
                     .arg(gap.count)
                     .arg(movesUp ? "; later times have moved up" : "");
    }
    return lines;
}

void tellLost(QStringList &missing, quint64 lost, const char *what) {
    if (lost > 0)
        missing << QString("%1 %2").arg(lost).arg(what);
}

QString minuteOf(qint64 sample) { return QString::number(ChartData::timeOf(sample), 'f', 2); }

QString duration(double minutes) {
    const qint64 seconds = std::llrint(minutes * 60);
    return QString("%1 minutes (%2:%3:%4)")
        .arg(minutes, 0, 'f', 2)
        .arg(seconds / 3600)
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace ostrel
