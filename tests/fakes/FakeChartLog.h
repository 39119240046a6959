// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartContract.h"

#include <QStringList>

#include <map>
#include <set>

/// A running log without a disk: which directories hold one, and which files were saved from which.
class FakeChartLog : public ChartLog {
public:
    qint16 WriteLog(const QString &LogDirectory, qint16, qint32 Interval, double) override {
        written << QStringLiteral("%1 %2").arg(LogDirectory).arg(Interval);
        return status;
    }
    bool CheckLogFile(const QString &LogDirectory) override { return logs.contains(withoutSeparator(LogDirectory)); }
    qint16 SaveLogAs(const QString &LogDirectory, qint16, const QString &NewFileName) override {
        if (status == 0)
            saved[NewFileName] = withoutSeparator(LogDirectory);
        return status;
    }
    void CloseLog(const QString &LogDirectory, qint16) override { logs.erase(withoutSeparator(LogDirectory)); }
    QStringList UnreadLogFiles(const QString &) override { return {}; }
    bool DiscardLog(const QString &) override { return true; }
    void KeepWastebasketLimits() override {}

    std::set<QString> logs;           ///< directories with a usable log
    std::map<QString, QString> saved; ///< files, and the directories that they came from
    QStringList written;
    qint16 status = 0; ///< what WriteLog and SaveLogAs answer

private:
    static QString withoutSeparator(const QString &path) {
        return path.endsWith(QLatin1Char('/')) ? path.chopped(1) : path;
    }
};
