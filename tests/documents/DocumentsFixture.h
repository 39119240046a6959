// SPDX-License-Identifier: MIT
#pragma once

#include "documents/ClearAndClose.h"
#include "documents/OpenFiles.h"
#include "documents/SaveFiles.h"
#include "fakes/FakeChart.h"
#include "fakes/FakeCommonDialog.h"
#include "fakes/FakeErrorRoute.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

/// The commands on files over charts, dialogs and a window without a screen. A character is 100 twips wide.
class DocumentsTest : public testing::Test, public DocumentWindow {
protected:
    DocumentsTest() {
        tabs.ChartCount = 1;
        for (FakeChart &each : chart)
            each.files = &files;
    }
    /// Opens files, each of `minutes`, in the tabs from the first free one on.
    void open(const QStringList &paths, float minutes = 60) {
        for (const QString &path : paths) {
            files[path] = minutes;
            openFiles.DrawChartLabel(path);
        }
    }
    /// The captions of the tabs in use; behind them a star where the data are not saved.
    std::string heads() const {
        QStringList heads;
        for (int i = 0; i < tabs.ChartCount; ++i)
            heads << captions[i] + (tabs.ChartSaved[i] ? "" : "*");
        return heads.join(", ").toStdString();
    }
    /// Tool tip, title and path of one tab.
    std::string names(int i) const {
        return (tips[i] + '|' + chart[i].title + '|' + tabs.ChartFileName[i]).toStdString();
    }

    void setTabHead(int tab, const QString &caption, const QString &toolTip) override {
        captions[tab] = caption;
        tips[tab] = toolTip;
    }
    void takeTabHead(int tab, int from) override { setTabHead(tab, captions[from], tips[from]); }
    void selectTab(int tab) override { tabs.CurrentChart = tab; }
    void setScrollMax(int tab, qint16 minutes) override { scrollMax[tab] = minutes; }
    void takeScrollRange(int tab, int from) override { scrollMax[tab] = scrollMax[from]; }
    void resetScroll(int tab) override { scrollMax[tab] = -1; }
    void setChartTime(const QString &text) override { chartTime = text; }
    float textWidth(const QString &text) const override { return 100.0F * static_cast<float>(text.size()); }

    TabStates tabs;
    FakeFiles files;
    FakeChart chart[tabCount];
    DocumentCharts charts{&chart[0], &chart[1], &chart[2], &chart[3], &chart[4]};
    QStringList captions{"Chart Recorder", "(empty)", "(empty)", "(empty)", "(empty)"};
    QStringList tips{"", "", "", "", ""};
    std::array<int, tabCount> scrollMax{};
    QString chartTime;
    FakeCommonDialog ComDlg;
    FakePrompts prompts;
    FakeErrorRoute errors;
    OpenFiles openFiles{tabs, charts, *this, ComDlg, prompts};
    RunState run;
    SaveFiles save{tabs, run, charts, *this, ComDlg, prompts, errors};
    ClearAndClose clearAndClose{tabs, run, charts, *this, prompts, errors, save};
};
