// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeChartLog.h"
#include "fakes/FakePlatform.h"
#include "shell/Recovery.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// Recovery on a real folder. The operator is `dialog`; saving a log writes down what was saved.
class RecoveryFixture : public testing::Test, public LogSaver {
protected:
    /// A run of that name crashes: its log stands in a directory, its entry in the store.
    void leave(const QString &tag, const char *SystemName) {
        makeFile("Log/" + tag + "/Log00001.dat");
        addEntry(tag, SystemName);
    }
    void addEntry(const QString &tag, const char *SystemName) {
        chart.logs.insert(app.path() + "/Log/" + tag);
        table.push_back({QString::number(table.size()), QString("%1|14.03.26|09:26|%2").arg(SystemName, tag)});
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
    /// What is in the Log folder.
    QString standing() const {
        return QDir(app.filePath("Log")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name).join(' ');
    }
    void mnuSaveLog_Click() override {
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
    FakeSettingsStore store;
    FakePrompts prompts;
    FakeClock clock;
    FakeChartLog chart;
    std::vector<SettingRow> table{{"0", "1"}};
    Instances instances{identity, store, prompts, clock, app.path()};
    Recovery recovery{
        identity, table, log, instances, {chart, *this, store, prompts, [this](Recovery &form) { show(form); }}};

    std::function<void(Recovery &)> dialog;
    QStringList cancelled; ///< systems whose save dialog the operator cancels
    QStringList offered;
    QString saved;
};
