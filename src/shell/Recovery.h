// SPDX-License-Identifier: MIT
#pragma once

#include "base/Commands.h"
#include "base/Values.h"
#include "chart/files/RunLog.h"
#include "platform/Prompts.h"
#include "platform/SettingsStore.h"
#include "shell/Instances.h"
#include "shell/ShellPorts.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace ostrel {

/// A line of the list of left-over logs.
struct RecoveryRow {
    static constexpr qint32 notRecovered = 0;
    static constexpr qint32 recovered = -1;

    QString text;
    qint32 itemData = notRecovered;
    bool checked = false;
};

/// Offers the logs that crashed runs left behind. Recovering one means saving it as a log file; when the operator is
/// done, or there is nothing to offer, all left-overs go to the wastebasket, but for those that cannot be read at this
/// start: they stay with their entries and are offered again at the next. Only for a copy that found no other one
/// running.
class Recovery {
public:
    /// What recovery runs and reaches.
    struct Uses {
        RunLog &Chart5;
        const Commands &commands;
        SettingsStore &store;
        Prompts &prompts;
        std::function<void(Recovery &)> showDialog; ///< frmDataRecovery, until the operator ends it
    };

    /// `LogInfoTable` is what was in the store before this copy wrote to it; empty when it had no such section.
    Recovery(Identity &identity, const std::vector<SettingRow> &LogInfoTable, const LogState &log, Instances &instances,
             Uses uses);

    /// Looks for left-overs and offers them. A log without any entries in the store is a run-time error (13).
    void offer();

    const std::vector<RecoveryRow> &rows() const { return rows_; }
    void setChecked(std::size_t row, bool checked) { rows_.at(row).checked = checked; }
    bool cmdRecoverButtonEnabled() const;

    /// Both answer whether the dialog is done.
    [[nodiscard]] bool cmdRecoverButton_Click();
    [[nodiscard]] bool cmdDoneButton_Click();

private:
    void FillKnownLogs();
    void FillUnknownLogs();
    void RebuildLogList();
    void PurgeLogDirectories();
    void purgeEntries(const QStringList &kept);
    void recover(RecoveryRow &row, const QString &LogDirectory, const QString &SystemName);
    bool isLeftOver(const SettingRow &entry) const;
    bool purge(const QString &directory);
    void tellUnread(const QString &directory);
    void tellUnmoved();
    bool isKnown(const QString &name) const;
    QString directoryOf(const QString &name) const;

    Identity &identity_;
    const std::vector<SettingRow> &LogInfoTable_;
    const LogState &log_;
    Instances &instances_;
    Uses uses_;

    std::vector<RecoveryRow> rows_;
    QStringList UnknownLogDirs_;
    QStringList leftOvers_; ///< the directories that were there when the search began, but for those of running copies
    QStringList unread_;    ///< those of which a file could not be read
    QStringList unmoved_;   ///< those that the wastebasket did not take
};

} // namespace ostrel
