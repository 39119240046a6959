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

/// Offers the logs that crashed runs left behind. To recover a log means to save it as a log file. When the operator is
/// done, or there is nothing to offer, all left-overs go to the wastebasket, except those that cannot be read or moved
/// now: they stay with their entries and are offered at the next start. Only for a copy that found no other copy
/// running.
class Recovery {
public:
    /// Everything that recovery uses from outside.
    struct Uses {
        RunLog &Chart5;
        const Commands &commands;
        SettingsStore &store;
        Prompts &prompts;
        std::function<void(Recovery &)> showDialog; ///< shows frmDataRecovery until the operator closes it
    };

    /// `LogInfoTable` is the section LogInfo from before this copy wrote to it; empty without such a section.
    Recovery(Identity &identity, const std::vector<SettingRow> &LogInfoTable, const LogState &log, Instances &instances,
             Uses uses);

    /// Searches for left-overs and offers them. A left-over log while LogInfoTable is empty raises type mismatch (13).
    void offer();

    const std::vector<RecoveryRow> &rows() const { return rows_; }
    void setChecked(std::size_t row, bool checked) { rows_.at(row).checked = checked; }
    bool cmdRecoverButtonEnabled() const;

    /// Both return whether the dialog is done.
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
    QStringList leftOvers_; ///< the directories at the start of the search, without those of running copies
    QStringList unread_;    ///< the directories with a file that cannot be read
    QStringList unmoved_;   ///< the directories that could not be moved to the wastebasket
};

} // namespace ostrel
