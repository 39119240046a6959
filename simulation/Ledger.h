// SPDX-License-Identifier: MIT
#pragma once

#include "app/ProgramFixture.h"
#include "simulation/SimulatedDisk.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <vector>

namespace ostrel {

/// What the program's logs have acknowledged, over all its lives, and whether the disk still has it.
class Ledger {
public:
    using Require = std::function<void(bool holds, const QString &rule)>;

    Ledger(ProgramFixture &on, const SimulatedDisk &disk, Require require)
        : on_(on), disk_(disk), require_(std::move(require)) {}

    // The program's life.
    void starts();
    void hasStarted();
    void hasEnded();

    /// In this life.
    bool diskFailed() const {
        return disk_.failures != failuresAtStart_ || disk_.unread != unreadAtStart_ || disk_.refuses != 0;
    }

    /// These records, of a running log, are safe.
    void acknowledge(const QByteArray &records);
    /// All that the chart shows is safe.
    void acknowledge(const Quillchart &chart);

    // The running log.
    void writesInto(const QString &folder) { logFolder_ = folder; }
    /// A tick has brought all of it to the disk; only what can be saved counts as safe.
    void logWritten(bool canBeSaved);
    qint64 safeInLog() const { return safeInLog_; } ///< pairs

    // Left-over logs.
    void offered() { offered_ = true; }
    void decided() { decided_ = true; } ///< the operator has done something about them

    // A saved copy of the log.
    void logSaved(const QString &name);
    void toldOfDamage() { missing_.clear(); }
    /// What a saved log is without, and nobody has told of; empty for nothing.
    const QString &untold() const { return missing_; }

private:
    const Quillchart &log() const { return on_.chart(logChart); }
    void acknowledgePair(qint64 pair);
    void checkFolder();

    ProgramFixture &on_;
    const SimulatedDisk &disk_;
    const Require require_;
    std::vector<bool> safe_; ///< pairs, by their numbers
    int failuresAtStart_ = 0;
    int unreadAtStart_ = 0;
    qint64 safeInLog_ = 0;
    QString logFolder_;
    std::size_t entriesInLog_ = 0; ///< marks and method texts, when it was written
    QString missing_;
    QStringList leftOver_; ///< files of logs that there were at the start
    bool offered_ = false;
    bool decided_ = false;
};

} // namespace ostrel
