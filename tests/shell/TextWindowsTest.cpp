// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

namespace {

/// The notes of a file in front.
class TextWindowsTest : public StartedProgram {
protected:
    TextWindowsTest() { open("a.chd", 1); }

    /// Opens the notes; the operator types, clicks a button or takes the close box as long as the window is up. How
    /// much of it he came to.
    qsizetype notes(QStringList acts) {
        const auto all = acts.size();
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
            EXPECT_TRUE(pressed("cmdNotes"));
            const QString act = acts.isEmpty() ? QString() : acts.takeFirst();
            if (act.isEmpty())
                QApplication::activeModalWidget()->hide();
            else if (act == "close")
                QApplication::activeModalWidget()->close();
            else if (act.startsWith("cmd"))
                click(act);
            else
                QTest::keyClicks(find<QWidget>("txtNotes"), act);
        });
        hand.start(0);
        trigger("mnuNotes");
        EXPECT_FALSE(pressed("cmdNotes"));
        return all - acts.size();
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
        EXPECT_EQ(notes({leaving, "never"}), 1);
        EXPECT_EQ(told(), "");

        prompts.answers = {BoxAnswer::Cancel, BoxAnswer::Cancel, BoxAnswer::No};
        EXPECT_EQ(notes({"x", leaving, "close", leaving, "never"}), 4);
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
