// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeChart.h"
#include "fakes/FakePlatform.h"
#include "view/AxisPanels.h"
#include "view/ChartTabs.h"
#include "view/CommandStates.h"
#include "view/InitMainWindow.h"
#include "view/LiveView.h"
#include "view/NumericKeys.h"
#include "view/TimeAxis.h"

#include <QTest>
#include <gtest/gtest.h>

/// Lets a failed comparison of texts be read.
inline void PrintTo(const QString &text, std::ostream *out) { *out << '"' << text.toStdString() << '"'; }

/// An operator's hand on one entry.
class Hand {
public:
    Hand(EntryText &entry, QWidget &keys) : entry_(entry), keys_(keys) {}

    /// In place of what stands there.
    Hand &type(const QString &text) {
        entry_.selectWhole();
        QTest::keyClicks(&keys_, text);
        return *this;
    }
    void enter() { QTest::keyClick(&keys_, Qt::Key_Return); }

private:
    EntryText &entry_;
    QWidget &keys_;
};

/// The units of the view, set up as at the start of the program, over real controls and charts without a screen.
class ViewTest : public testing::Test {
protected:
    ViewTest() {
        for (int i = 0; i < chartInstances; ++i)
            charts[i] = &chart[i];
        for (int i = 0; i < tabCount; ++i)
            tabBar.addTab(i == 0 ? "Chart Recorder" : "(empty)");
        axes.attach();
        time.attach();
        tabStrip.attach();
        InitMainWindow({values, charts, timeControls, axes, states, [] {}, [](const QString &) {}, [] {},
                        [](float, float) {}, [this](int i) { front = i; }, [] { return true; },
                        [this] { states.commandsAt(Moment::LinkLost); }, [] {}});
    }

    Hand scale(int i) { return {*axisControls.cmbYAxis[i], *axisControls.cmbYAxis[i]}; }
    Hand minimum(int i) { return {*axisControls.txtYAxisMin[i], *axisControls.txtYAxisMin[i]}; }
    Hand window() { return {*timeControls.txtChartTime, *timeControls.txtChartTime}; }
    /// Both entries of a panel.
    QString panel(int i) const { return axisControls.cmbYAxis[i]->Text() + ' ' + axisControls.txtYAxisMin[i]->Text(); }
    QString windowText() const { return timeControls.txtChartTime->Text(); }
    bool lit(int i) const { return axisControls.cmdSet[i]->isEnabled(); }
    ScrollEntry &bar(int i = 0) const { return *timeControls.ScrollChart[i]; }
    void chooseWindow() { timeControls.optTimeAxis[1]->setValue(true); }

    /// The stretch of time that a chart shows.
    QString shown(int i = 0) const {
        return QString("%1 to %2").arg(double(chart[i].timeMin)).arg(double(chart[i].timeMax));
    }
    /// A run of `minutes` in a tab, which is in use from then on.
    void give(int tab, float minutes) {
        chart[tab].lastTime = minutes;
        values.tabs.ChartCount = std::max<int>(values.tabs.ChartCount, tab + 1);
    }

    QAction *action(const QString &name) {
        auto &found = actions_[name];
        if (!found)
            found = std::make_unique<QAction>();
        return found.get();
    }
    bool on(const QString &name) { return action(name)->isEnabled(); }

private:
    std::map<QString, std::unique_ptr<QAction>> actions_;
    QWidget window_;

protected:
    Values values;
    TabStates &tabs = values.tabs;
    RunState &run = values.run;
    FakePrompts prompts;
    FakeChart chart[chartInstances];
    Charts charts{};
    AxisControls axisControls = makeAxisControls();
    TimeControls timeControls = makeTimeControls();
    QTabBar tabBar{&window_};
    int chartFocused = 0;
    int front = -1;
    QStringList told;

    NumericKeys keys{values.DecimalPoint, prompts};
    AxisPanels axes{tabs, charts, axisControls, *timeControls.txtChartTime, keys, prompts};
    TimeAxis time{tabs, run, charts, timeControls, axes, keys, prompts, [this] { ++chartFocused; }};
    LiveView live{tabs, chart[recorderChart], timeControls};
    CommandStates states{run, tabs, timeControls, [this](const QString &name) { return action(name); }};
    ChartTabs tabStrip{tabs, charts, tabBar, timeControls, time, states, [this](int i) { front = i; }};

private:
    template <typename Control>
    Control *make() {
        return new Control(&window_);
    }
    AxisControls makeAxisControls() {
        AxisControls made;
        for (int i = 0; i < 2; ++i) {
            made.cmbYAxis[i] = make<ComboEntry>();
            made.txtYAxisMin[i] = make<TextEntry>();
            made.cmdSet[i] = make<CommandButton>();
        }
        return made;
    }
    TimeControls makeTimeControls() {
        TimeControls made;
        made.optTimeAxis = {make<OptionButton>(), make<OptionButton>()};
        made.optTimeAxis[0]->setValue(true);
        made.txtChartTime = make<TextEntry>();
        made.cmdSetTime = make<CommandButton>();
        for (ScrollEntry *&scroll : made.ScrollChart) {
            scroll = make<ScrollEntry>();
            scroll->setEnabled(false);
        }
        return made;
    }
};
