// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/RunDocument.h"
#include "chart/files/RunLog.h"
#include "fakes/FakePlatform.h"
#include "shell/Recovery.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// Recovery on a real folder with real logs. The operator is `dialog`; saving a log writes down what was saved.
class RecoveryFixture : public testing::Test {
protected:
    RecoveryFixture() {
        commands.bind("mnuSaveLog", [this] { saveLog(); });
        chart.setWastebasket(instances.wastebasket(), [this] { return clock.now().date(); });
    }

    /// A run of that name crashes: its log stands in a directory, its entry in the store.
    void leave(const QString &tag, const char *SystemName) {
        layLog("Log/" + tag);
        addEntry(tag, SystemName);
    }
    void addEntry(const QString &tag, const char *SystemName) {
        table.push_back({QString::number(table.size()), QString("%1|14.03.26|09:26|%2").arg(SystemName, tag)});
    }
    void layLog(const QString &directory) {
        ASSERT_TRUE(QDir(app.path()).mkpath(directory));
        RunDocument left;
        left.AddSample(0.5F, 20);
        ASSERT_EQ(RunLog(left).WriteLog(app.filePath(directory), 1, 20000, 24), 0);
    }
    void makeFile(const QString &path) {
        ASSERT_TRUE(QDir(app.path()).mkpath(QFileInfo(path).path()));
        ASSERT_TRUE(QFile(app.filePath(path)).open(QIODevice::WriteOnly));
    }
    bool exists(const char *path) const { return QFileInfo::exists(app.filePath(path)); }
    /// Starts; answers what was offered.
    QString offer() {
        for (const SettingRow &row : table)
            store.rows[{"LogInfo", row.key}] = row.value;
        recovery.offer();
        return offered.join(';');
    }
    QString standing(const char *folder = "Log") const {
        return QDir(app.filePath(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name).join(' ');
    }
    void saveLog() {
        log.LogSaved = !cancelled.contains(identity.SystemName);
        if (log.LogSaved)
            saved += (saved.isEmpty() ? "" : ", ") + identity.SystemName + " from " +
                     QFileInfo(identity.LogDirectory).fileName();
    }
    void show(Recovery &form) {
        for (const RecoveryRow &row : form.rows())
            offered << row.text.simplified();
        if (dialog)
            dialog(form);
    }

    QTemporaryDir app;
    Identity identity;
    LogState log;
    Commands commands;
    FakeSettingsStore store;
    FakePrompts prompts;
    FakeClock clock;
    const RunDocument run;
    RunLog chart{run};
    std::vector<SettingRow> table{{"0", "1"}};
    Instances instances{identity, store, prompts, clock, app.path()};
    Recovery recovery{
        identity, table, log, instances, {chart, commands, store, prompts, [this](Recovery &form) { show(form); }}};

    std::function<void(Recovery &)> dialog;
    QStringList cancelled; ///< systems whose save dialog the operator cancels
    QStringList offered;
    QString saved;
};
