// SPDX-License-Identifier: MIT
#include "shell/TextWindows.h"

#include "fakes/FakeChart.h"
#include "fakes/FakePlatform.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

/// The windows on the second tab, beneath a toolbar without a screen.
class TextWindowsTest : public testing::Test, public ShellWindow {
protected:
    TextWindowsTest() {
        tabs.CurrentChart = 1;
        chart[1].AddMethodText("Load   5 ml\r\nWash  10 ml", 0);
        chart[1].notes = "pH 7.4\r\n";
    }
    void setCaption(const QString &) override {}
    void setButtonValue(const QString &button, bool on) override { pressed[button] = on; }
    bool buttonValue(const QString &button) const override { return pressed.at(button); }
    void setToolTip(const QString &, const QString &text) override { tip = text; }
    void Toolsbar_ButtonClick(const QString &button) override {
        button == "cmdMethod" ? windows.cmdMethod_Click() : windows.cmdNotes_Click();
    }

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
    QString tip;
    TextWindows windows{tabs, {&chart[0], &chart[1], &chart[2], &chart[3], &chart[4]}, *this, prompts, nullptr};
};

TEST_F(TextWindowsTest, TheMethodIsShownWhileItsButtonIsPressed) {
    for (const bool byCloseBox : {false, true}) {
        QTimer::singleShot(0, [&] {
            auto *txtMethod = static_cast<QPlainTextEdit *>(find("txtMethod"));
            EXPECT_EQ(txtMethod->toPlainText(), "Load   5 ml\nWash  10 ml");
            QTest::keyClicks(txtMethod, "x");
            EXPECT_FALSE(txtMethod->document()->isModified());
            EXPECT_TRUE(pressed["cmdMethod"]);
            EXPECT_EQ(tip, "Hide method form");
            byCloseBox ? closeBox()() : QTest::keyClick(txtMethod, Qt::Key_Escape);
        });
        windows.mnuMethod_Click();
        EXPECT_FALSE(pressed["cmdMethod"]);
        EXPECT_EQ(tip, "Show method form");
    }
}

TEST_F(TextWindowsTest, OkTakesChangedNotesOnly) {
    EXPECT_EQ(notes({click("cmdOK")}), 1U);
    EXPECT_TRUE(tabs.ChartSaved[1]);
    EXPECT_EQ(notes({type("cut 3\r"), click("cmdOK")}), 2U);
    EXPECT_EQ(chart[1].notes, "cut 3\r\npH 7.4\r\n");
    EXPECT_FALSE(tabs.ChartSaved[1]);
    EXPECT_TRUE(prompts.shown.empty());
    EXPECT_EQ(tip, "Show notes form");
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

TEST_F(TextWindowsTest, NotesThatNobodyChangedStayLetterForLetter) {
    const QString odd = QStringLiteral("10\u00a0%\n\rtab\t\r");
    chart[1].notes = odd;
    EXPECT_EQ(notes({click("cmdOK")}), 1U);
    EXPECT_EQ(chart[1].notes, odd);
    EXPECT_TRUE(tabs.ChartSaved[1]);
}

} // namespace
