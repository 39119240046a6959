// SPDX-License-Identifier: MIT
#include "shell/TextWindows.h"

#include "fakes/FakeChart.h"
#include "fakes/FakePlatform.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

/// The windows on the second tab, beneath a toolbar without a screen.
class TextWindowsTest : public testing::Test, public ShellWindow {
protected:
    TextWindowsTest() { tabs.CurrentChart = 1; }
    void setCaption(const QString &) override {}
    void setButtonValue(const QString &button, bool on) override { pressed[button] = on; }
    bool buttonValue(const QString &button) const override { return pressed.at(button); }
    void setToolTip(const QString &, const QString &) override {}
    void Toolsbar_ButtonClick(const QString &) override { windows.cmdNotes_Click(); }

    /// Opens the notes; the operator does `acts` one after the other as long as the window is up. How many he came to.
    std::size_t notes(std::vector<std::function<void()>> acts) {
        std::size_t done = 0;
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
            EXPECT_TRUE(pressed["cmdNotes"]);
            if (done < acts.size())
                acts[done++]();
            else
                QApplication::activeModalWidget()->hide();
        });
        hand.start(0);
        windows.mnuNotes_Click();
        return done;
    }
    static std::function<void()> type(const char *text) {
        return [text] { QTest::keyClicks(find("txtNotes"), text); };
    }
    static std::function<void()> click(const char *button) {
        return [button] { QTest::mouseClick(find(button), Qt::LeftButton); };
    }
    static std::function<void()> closeBox() {
        return [] { QApplication::activeModalWidget()->close(); };
    }
    static QWidget *find(const char *name) { return QApplication::activeModalWidget()->findChild<QWidget *>(name); }

    TabStates tabs;
    FakeChart chart[tabCount];
    FakePrompts prompts;
    std::map<QString, bool> pressed;
    FakeChart log;
    int written = 0;
    TextWindows windows{
        tabs,   {&chart[0], &chart[1], &chart[2], &chart[3], &chart[4]}, {log, [this] { ++written; }}, *this, prompts,
        nullptr};
};

TEST_F(TextWindowsTest, OkTakesChangedNotesAndLeavesOthersLetterForLetter) {
    const QString odd = QStringLiteral("10\u00a0%\n\rtab\t\r");
    chart[1].notes = odd;
    EXPECT_EQ(notes({click("cmdOK")}), 1U);
    EXPECT_EQ(chart[1].notes, odd);
    EXPECT_TRUE(tabs.ChartSaved[1]);
    chart[1].notes = "pH 7.4\r\n";
    EXPECT_EQ(notes({type("cut 3\r"), click("cmdOK")}), 2U);
    EXPECT_EQ(chart[1].notes, "cut 3\r\npH 7.4\r\n");
    EXPECT_FALSE(tabs.ChartSaved[1]);
    EXPECT_TRUE(prompts.shown.empty());
}

TEST_F(TextWindowsTest, CancelAndTheCloseBoxAskAboutChangedNotes) {
    for (const auto &leave : {click("cmdCancel"), closeBox()}) {
        chart[1].notes = "pH 7.4";
        tabs.ChartSaved[1] = true;
        prompts.shown.clear();
        EXPECT_EQ(notes({leave}), 1U);
        EXPECT_TRUE(prompts.shown.empty());

        prompts.answers = {BoxAnswer::Cancel, BoxAnswer::Cancel, BoxAnswer::No};
        EXPECT_EQ(notes({type("x"), leave, closeBox(), leave}), 4U);
        EXPECT_EQ(prompts.shown.at(0).text, "Your notes have been changed\rSave changes ?");
        EXPECT_EQ(chart[1].notes, "pH 7.4");
        EXPECT_TRUE(tabs.ChartSaved[1]);

        prompts.answers = {BoxAnswer::Yes};
        EXPECT_EQ(notes({type("x"), leave}), 2U);
        EXPECT_EQ(chart[1].notes, "xpH 7.4");
        EXPECT_FALSE(tabs.ChartSaved[1]);
    }
}

} // namespace
