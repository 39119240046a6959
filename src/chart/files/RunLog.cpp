// SPDX-License-Identifier: MIT
#include "chart/files/RunLog.h"

#include "base/ErrorNumbers.h"
#include "base/RunTimeError.h"
#include "chart/files/ChartFile.h"
#include "chart/files/LogWastebasket.h"
#include "chart/files/RunningLogFiles.h"
#include "chart/files/RunningLogReader.h"
#include "chart/files/SaveNote.h"
#include "chart/run/Succeeds.h"

#include <utility>

namespace ostrel {

qint16 RunLog::WriteLog(const QString &LogDirectory, qint16 InstanceNumber, qint32, double DataFileSizeHours) {
    if (std::exchange(written_, run_.number()) != run_.number())
        writer_.close(); // its files are another run's
    const std::error_code error = writer_.write(run_.data(), LogDirectory, InstanceNumber, DataFileSizeHours);
    return error ? static_cast<qint16>(RunTimeError::numberOf(error)) : qint16{0};
}

bool RunLog::CheckLogFile(const QString &LogDirectory) const {
    return succeeds([&] {
        const LogFinding found = findRunningLog(LogDirectory);
        return found == LogFinding::Log || found == LogFinding::Unread;
    });
}

qint16 RunLog::SaveLogAs(const QString &LogDirectory, qint16, const QString &NewFileName) const {
    constexpr qint16 failed = 1;
    bool whole = true;
    const bool saved = succeeds([&] {
        RecoveredLog log = readRunningLog(LogDirectory);
        whole = log.whole();
        noteSave(log.data.provenance, QStringLiteral("saved from the running log"));
        return !log.empty() && !saveChartFile(NewFileName, logFile, log.data, log.axes());
    });
    // The rest has been saved; the user is told that something is missing.
    if (saved && !whole && ChartError)
        ChartError(ErrorNumber::LogDamaged);
    return saved ? 0 : failed;
}

void RunLog::CloseLog(const QString &LogDirectory, qint16) {
    writer_.close();
    DiscardLog(LogDirectory);
}

QStringList RunLog::UnreadLogFiles(const QString &LogDirectory) const {
    std::vector<BadLogFile> files = readRunningLog(LogDirectory).badFiles;
    std::erase_if(files, [](const BadLogFile &file) { return !file.isUnread(); });
    return inWords(files);
}

bool RunLog::DiscardLog(const QString &LogDirectory) const {
    const LogFinding found = findRunningLog(LogDirectory);
    if (found == LogFinding::Unread)
        return false;
    const bool worthKeeping = found != LogFinding::Nothing && !wastebasket_.isEmpty();
    if (worthKeeping && moveToWastebasket(LogDirectory, wastebasket_, today_()))
        return false;
    emptyLogDirectory(LogDirectory);
    return true;
}

void RunLog::KeepWastebasketLimits() const {
    if (!wastebasket_.isEmpty())
        keepWastebasketLimits(wastebasket_, today_());
}

void RunLog::setWastebasket(const QString &folder, std::function<QDate()> today) {
    wastebasket_ = folder;
    today_ = std::move(today);
}

} // namespace ostrel
