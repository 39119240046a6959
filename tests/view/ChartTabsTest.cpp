// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

namespace {

class ChartTabsTest : public StartedProgram {
protected:
    QString tip(const char *button) { return find<QAction>(button)->toolTip(); }
    QString toolbar() { return find<QAction>("cmdClear")->text() + ": " + tip("cmdClear") + ", " + tip("cmdSave"); }
};

TEST_F(ChartTabsTest, EmptyTabIsRefused) {
    open("a.chd", 1);
    bringToFront(3);
    EXPECT_EQ(find<QTabBar>("TabChart")->currentIndex(), 1);
    for (int tab = 0; tab < tabCount; ++tab) {
        EXPECT_EQ(chart(tab).isVisible(), tab == 1);
        EXPECT_EQ(find<QWidget>(QString("ScrollChart(%1)").arg(tab))->isVisible(), tab == 1);
    }
}

TEST_F(ChartTabsTest, KeysStepThroughTheTabsInUse) {
    open("a.chd", 1);
    open("b.chd", 1);
    QWidget *window = find<QWidget>("frmMain");
    QApplication::setActiveWindow(window); // shortcuts are those of the active window
    const auto press = [&](int key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(window->focusWidget() != nullptr ? window->focusWidget() : window, Qt::Key(key), modifiers);
        return find<QTabBar>("TabChart")->currentIndex();
    };
    EXPECT_EQ(press(Qt::Key_Tab, Qt::ControlModifier), 0); // from the last one, past the empty ones
    EXPECT_EQ(press(Qt::Key_Tab, Qt::ControlModifier), 1);
    EXPECT_EQ(press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier), 0);
    EXPECT_EQ(press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier), 2);
}

TEST_F(ChartTabsTest, ToolbarNamesWhatItSavesAndCloses) {
    open("A&B.chd", 1);
    EXPECT_EQ(toolbar(), "Close: Close A&B, Save A&B");
    open("<b>1.chd", 1);
    EXPECT_TRUE(tip("cmdSave").contains("Save &lt;b&gt;1"));
    bringToFront(0);
    EXPECT_EQ(toolbar(), "Clear: Clear Chart Recorder data, Save Chart Recorder data");
}

TEST_F(ChartTabsTest, ALostLinkRunsWhatTheOperatorAnswers) {
    link();
    trigger("mnuStart");
    QStringList came;
    const auto lose = [&](const char *button) {
        dialogAnswers["frmNoData"] = [&, button] {
            came << "no data";
            timers["TimerCheckComData"]->tick(); // lost again: no second dialog over the first
            click(button);
        };
        advanceUnderDialogs(10s);
    };
    dialogAnswers["frmSetup"] = [&] {
        came << "setup";
        QTest::keyClick(find<QWidget>("frmSetup"), Qt::Key_Escape);
    };
    lose("cmdOk");
    EXPECT_FALSE(led() || enabled("mnuStart") || enabled("cmdStop"));
    link();
    lose("cmdSetup");
    link();
    dialogAnswers["frmSetup"] = [&] { // over what the first answer opened, a link that is lost again is told
        meanwhile([&] {
            came << "again";
            click("cmdExit");
        });
        timers["TimerCheckComData"]->tick();
        find<QWidget>("frmSetup")->close();
    };
    lose("cmdSetup");
    EXPECT_EQ(came.join(", "), "no data, no data, setup, no data, again");
    EXPECT_TRUE(told().contains("Exit without save?"));
}

} // namespace
