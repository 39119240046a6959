// SPDX-License-Identifier: MIT
#include "archive/RunningLogs.h"

#include "archive/Facts.h"
#include "archive/RunFile.h"
#include "base/AppFolders.h"
#include "chart/files/LogWastebasket.h"
#include "chart/files/RunningLogFiles.h"
#include "chart/run/IsoDate.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>

namespace ostrel {

namespace {

/// A log found in `folder`.
struct FoundLog {
    QString folder;
    bool discarded = false;
    qint64 begun = 0; ///< milliseconds since 1970, UTC; 0 when unknown
    std::vector<Fact> facts;
};

qint64 bytesIn(const QString &folder) {
    qint64 bytes = 0;
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks))
        bytes += belongsToLog(file.filePath()) ? file.size() : 0;
    return bytes;
}

Fact begunFact(qint64 begun) {
    if (begun == 0)
        return {"Begun", "begun", QJsonValue(), "unknown"};
    return textFact("Begun", "begun", isoDate(QDateTime::fromMSecsSinceEpoch(begun)));
}

void describe(FoundLog &found, const RecoveredLog &log) {
    const ChartData &run = log.data;
    const QStringList missing = missingOf(log);
    found.begun = log.begun;
    found.facts = {
        textFact("Folder", "folder", found.folder),
        {"Discarded", "discarded", found.discarded, found.discarded ? "yes" : "no"},
        {"System", "system", run.title, run.title.isEmpty() ? "unknown" : run.title},
        begunFact(log.begun),
        {"Duration", "minutes", run.lastTime(), duration(run.lastTime())},
        countFact("Samples", "samples", run.samples.size()),
        countFact("Event marks", "markCount", static_cast<qint64>(run.marks.size())),
        {"Size", "bytes", bytesIn(found.folder), QString("%1 bytes").arg(bytesIn(found.folder))},
        {"Missing", "missing", QJsonArray::fromStringList(missing), missing.isEmpty() ? "nothing" : missing.join("; ")},
    };
}

/// Finds every folder that may hold a log, those in the wastebasket first. Failed when a folder could not be listed.
ExitCode findFolders(const ArchiveCall &call, const QString &appPath, std::vector<FoundLog> &found) {
    FileOperations &disk = FileOperations::system();
    const QString logFolder = AppFolders::logs(appPath);
    const QString wastebasket = AppFolders::wastebasket(appPath);
    ExitCode result = Good;
    const auto namesIn = [&](const QString &folder) {
        QStringList names;
        const std::error_code error = listFolder(disk, folder, names);
        if (error && error != std::errc::no_such_file_or_directory) {
            call.complaints.tell("ostrel-file: " + folder +
                                 ": cannot be read: " + QString::fromStdString(error.message()));
            result = Failed;
        }
        return names;
    };
    namesIn(wastebasket);
    for (const DiscardedLog &log : discardedLogs(wastebasket))
        found.push_back({.folder = log.path, .discarded = true, .facts = {}});
    const QStringList names = namesIn(logFolder);
    found.push_back({.folder = logFolder, .facts = {}}); // files may lie directly in it
    for (const QString &name : names) {
        if (const QFileInfo entry(logFolder + u'/' + name); entry.isDir() && !entry.isSymLink())
            found.push_back({.folder = entry.filePath(), .facts = {}});
    }
    return result;
}

void tell(const ArchiveCall &call, const QString &appPath, const std::vector<FoundLog> &found) {
    if (call.line.isSet("json")) {
        QJsonArray all;
        for (const FoundLog &log : found)
            all.append(objectOf(log.facts));
        call.out.tell(QJsonDocument(all));
        return;
    }
    if (found.empty())
        call.out.tell(appPath + ": no logs");
    for (const FoundLog &log : found) {
        tellFacts(call.out, log.facts);
        call.out.tell(QString());
    }
}

} // namespace

QStringList missingOf(const RecoveredLog &log) {
    QStringList missing = inWords(log.badFiles);
    missing += inWords(log.gaps, log.data.samples.size());
    tellLost(missing, log.lostMarks, "event marks");
    tellLost(missing, log.lostMethodTexts, "method texts");
    if (log.lostTexts)
        missing << "the notes, the name of the system or where the run comes from, perhaps";
    return missing;
}

void declareLogs(QCommandLineParser &line) { line.addOption({"json", "Answer as a JSON array, one object to a log."}); }

ExitCode logs(const ArchiveCall &call) {
    const QString appPath = call.operands.isEmpty() ? AppFolders::app() : call.operand(0);
    if (!call.operands.isEmpty() && !QFileInfo(appPath).isDir())
        throw EarlyEnd{Failed, appPath + ": is no folder"};
    std::vector<FoundLog> found;
    const ExitCode result = findFolders(call, appPath, found);
    for (FoundLog &candidate : found) {
        const RecoveredLog log = readRunningLog(candidate.folder);
        if (!log.empty() || !log.whole())
            describe(candidate, log);
    }
    std::erase_if(found, [](const FoundLog &candidate) { return candidate.facts.empty(); });
    std::stable_sort(found.begin(), found.end(), [](const auto &a, const auto &b) { return a.begun < b.begun; });
    tell(call, appPath, found);
    return result;
}

} // namespace ostrel
