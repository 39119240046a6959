// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

namespace {

/// The notes of a file in front.
class TextWindowsTest : public StartedProgram {
protected:
    TextWindowsTest() { open("a.chd", 1); }

    /// Opens the notes; the operator types, clicks a button or takes the close box, and only the last act ends it.
    void notes(const QStringList &acts) {
        meanwhile([&] {
            EXPECT_TRUE(pressed("cmdNotes"));
            QWidget *window = QApplication::activeModalWidget();
            for (const QString &act : acts) {
                EXPECT_TRUE(window->isVisible()) << act.toStdString();
                if (act == "close")
                    window->close();
                else if (act.startsWith("cmd"))
                    click(act);
                else
                    QTest::keyClicks(find<QWidget>("txtNotes"), act);
            }
            EXPECT_FALSE(window->isVisible());
            window->hide();
        });
        trigger("mnuNotes");
        EXPECT_FALSE(pressed("cmdNotes"));
    }
    /// Whether the file closes without a question; it is opened again as it was.
    bool isSaved() {
        prompts.shown.clear();
        prompts.answers = {BoxAnswer::No};
        trigger("mnuClose");
        open("a.chd");
        return prompts.shown.empty();
    }
};

TEST_F(TextWindowsTest, OkTakesChangedNotesAndLeavesOthersLetterForLetter) {
    const QString odd = QStringLiteral("10\u00a0%\n\rtab\t\r");
    chart(1).SetNotes(odd);
    notes({"cmdOK"});
    EXPECT_EQ(chart(1).GetNotes(), odd);
    EXPECT_TRUE(isSaved());
    chart(1).SetNotes("pH 7.4\r\n");
    notes({"cut 3\r", "cmdOK"});
    EXPECT_EQ(chart(1).GetNotes(), "cut 3\r\npH 7.4\r\n");
    EXPECT_EQ(told(), "");
    EXPECT_FALSE(isSaved());
}

TEST_F(TextWindowsTest, CancelAndTheCloseBoxAskAboutChangedNotes) {
    for (const QString leaving : {"cmdCancel", "close"}) {
        prompts.shown.clear();
        notes({leaving});
        EXPECT_EQ(told(), "");

        prompts.answers = {BoxAnswer::Cancel, BoxAnswer::Cancel, BoxAnswer::No};
        notes({"x", leaving, "close", leaving});
        EXPECT_EQ(prompts.shown.size(), 3U);
        EXPECT_EQ(prompts.shown.at(0).text, "Your notes have been changed\rSave changes ?");
        EXPECT_EQ(chart(1).GetNotes(), "");
        EXPECT_TRUE(isSaved());

        prompts.answers = {BoxAnswer::Yes};
        notes({"x", leaving});
        EXPECT_EQ(chart(1).GetNotes(), "x");
        EXPECT_FALSE(isSaved());
    }
}

} // namespace
