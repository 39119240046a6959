// SPDX-License-Identifier: MIT
#include "simulation/Ledger.h"

#include "simulation/Instrument.h"
#include "simulation/SavedFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>

namespace ostrel {

namespace {

/// The number of a pair that the instrument has sent; -1 for what noise has made.
qint64 numberOf(SamplePair pair) {
    const bool known = pair.uv >= 0 && pair.uv < float(mostPairs) && pair.cond == condOf(qint64(pair.uv));
    return known ? static_cast<qint64>(pair.uv) : -1;
}

} // namespace

void Ledger::starts() {
    offered_ = decided_ = false;
    failuresAtStart_ = disk_.failures;
    unreadAtStart_ = disk_.unread;
    safeInLog_ = 0;
    logFolder_.clear();
    entriesInLog_ = 0;
    missing_.clear();
    leftOver_.clear();
    for (const QString &name : disk_.files(QStringLiteral("Log/"))) {
        std::vector<bool> pairs(safe_.size());
        findPairs(disk_.content(name), pairs);
        if (std::find(pairs.begin(), pairs.end(), true) != pairs.end())
            leftOver_ << name;
    }
}

void Ledger::hasStarted() {
    const bool calm = !on_.prevInstance && failuresAtStart_ == disk_.failures;
    require_(!calm || leftOver_.isEmpty() || offered_, QStringLiteral("a left-over log has not been offered"));
}

void Ledger::hasEnded() {
    for (const QString &name : std::as_const(leftOver_))
        require_(!offered_ || decided_ || disk_.has(name),
                 QStringLiteral("%1 is gone, and nobody has decided on it").arg(name));
    std::vector<bool> found(safe_.size());
    for (const QString &name : disk_.files())
        findPairs(disk_.content(name), found);
    for (std::size_t pair = 0; pair < found.size(); ++pair)
        require_(found[pair] || !safe_[pair],
                 QStringLiteral("pair %1, which a log had acknowledged, is gone").arg(pair));
}

void Ledger::acknowledge(const QByteArray &records) {
    if (records.isEmpty())
        return;
    std::vector<bool> found(mostPairs);
    findPairs(records, found);
    for (qint64 pair = 0; pair < mostPairs; ++pair) {
        if (found[std::size_t(pair)])
            acknowledgePair(pair);
    }
}

void Ledger::acknowledge(const Quillchart &chart) {
    const SampleStore &samples = chart.run().data().samples;
    for (qint64 i = 0; i < samples.size(); ++i)
        acknowledgePair(numberOf(samples.at(i)));
}

void Ledger::acknowledgePair(qint64 pair) {
    if (pair < 0)
        return;
    if (std::size_t(pair) >= safe_.size())
        safe_.resize(std::size_t(pair) + 1);
    safe_[std::size_t(pair)] = true;
}

void Ledger::logWritten(bool canBeSaved) {
    checkFolder();
    if (!canBeSaved)
        return;
    const SampleStore &samples = log().run().data().samples;
    for (; safeInLog_ < samples.size(); ++safeInLog_)
        acknowledgePair(numberOf(samples.at(safeInLog_)));
}

/// No other copy can take the log's folder, and its files have all marks and method texts.
void Ledger::checkFolder() {
    if (logFolder_.isEmpty() || diskFailed())
        return;
    const int folder = ::open(on_.folder.native(logFolder_).constData(), O_RDONLY | O_DIRECTORY);
    require_(folder < 0 || ::flock(folder, LOCK_EX | LOCK_NB) != 0, QStringLiteral("%1 is not held").arg(logFolder_));
    ::close(folder);
    const ChartData &data = log().run().data();
    const std::size_t entries = data.marks.size() + data.methodTexts.size();
    if (std::exchange(entriesInLog_, entries) == entries)
        return;
    std::size_t found = 0;
    for (const QString &name : disk_.files(logFolder_))
        found += std::size_t(entriesIn(disk_.content(name)));
    require_(found >= entries, QStringLiteral("%1 of %2 marks and texts are in the log").arg(found).arg(entries));
}

void Ledger::logSaved(const QString &name) {
    std::vector<bool> found(safe_.size());
    findPairs(disk_.content(name), found);
    const SampleStore &samples = log().run().data().samples;
    for (qint64 i = 0; i < safeInLog_ && missing_.isEmpty(); ++i) {
        const qint64 pair = numberOf(samples.at(i));
        if (pair >= 0 && !found.at(std::size_t(pair)))
            missing_ = QStringLiteral("%1 is without pair %2 of the log").arg(name).arg(pair);
    }
    require_(missing_.isEmpty() || diskFailed(), missing_);
}

} // namespace ostrel
