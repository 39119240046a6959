// SPDX-License-Identifier: MIT
#include "archive/RunFile.h"

#include <QFileInfo>

#include <cmath>
#include <string>

QString describe(const ChartFileReport &report) {
    switch (report.fault) {
    case ChartFileFault::None:
        return "whole";
    case ChartFileFault::Unreadable:
        return "cannot be read: " + QString::fromStdString(report.error.message());
    case ChartFileFault::NotAChart:
        return "not a chart file";
    case ChartFileFault::NewerVersion:
        return QString("of a newer version (%1) than this program knows").arg(report.head ? report.head->version : 0);
    case ChartFileFault::Truncated:
        return QString("cut off at byte %1").arg(report.position);
    case ChartFileFault::Damaged:
        return QString("damaged at byte %1").arg(report.position);
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
    const QFileInfo target(to);
    if (target.exists() && target.canonicalFilePath() == QFileInfo(from).canonicalFilePath())
        throw EarlyEnd{Misused, to + ": is the file to be read"};
    if (target.exists() && !call.line.isSet("overwrite"))
        throw EarlyEnd{Failed, to + ": is there already; --overwrite replaces it"};
}

void written(const QString &path, std::error_code error) {
    if (error)
        throw EarlyEnd{Failed, path + ": cannot be written: " + QString::fromStdString(error.message())};
}

QString duration(double minutes) {
    const qint64 seconds = std::llrint(minutes * 60);
    return QString("%1 minutes (%2:%3:%4)")
        .arg(minutes, 0, 'f', 2)
        .arg(seconds / 3600)
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}
