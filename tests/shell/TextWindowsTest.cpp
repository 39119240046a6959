// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

namespace {

/// The notes of a file in front.
class TextWindowsTest : public StartedProgram {
protected:
    TextWindowsTest() { open("a.chd", 1); }

    /// Opens the notes; the operator does `acts` one after the other as long as the window is up. How many he came to.
    std::size_t notes(std::vector<std::function<void()>> acts) {
        std::size_t done = 0;
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
            EXPECT_TRUE(pressed("cmdNotes"));
            if (done < acts.size())
                acts[done++]();
            else
                QApplication::activeModalWidget()->hide();
        });
        hand.start(0);
        trigger("mnuNotes");
        EXPECT_FALSE(pressed("cmdNotes"));
        return done;
    }
    std::function<void()> typing(const char *text) {
        return [=, this] { QTest::keyClicks(find<QWidget>("txtNotes"), text); };
    }
    std::function<void()> clicking(const char *button) {
        return [=, this] { click(button); };
    }
    std::function<void()> closeBox() {
        return [] { QApplication::activeModalWidget()->close(); };
    }
    /// Whether the file closes without a question; it is opened again as it was.
    bool isSaved() {
        const auto before = prompts.shown.size();
        prompts.answers = {BoxAnswer::No};
        trigger("mnuClose");
        const bool asked = prompts.shown.size() > before;
        prompts.answers.clear();
        prompts.shown.resize(before);
        open("a.chd");
        return !asked;
    }
};

TEST_F(TextWindowsTest, OkTakesChangedNotesAndLeavesOthersLetterForLetter) {
    const QString odd = QStringLiteral("10\u00a0%\n\rtab\t\r");
    chart(1).SetNotes(odd);
    EXPECT_EQ(notes({clicking("cmdOK")}), 1U);
    EXPECT_EQ(chart(1).GetNotes(), odd);
    EXPECT_TRUE(isSaved());
    chart(1).SetNotes("pH 7.4\r\n");
    EXPECT_EQ(notes({typing("cut 3\r"), clicking("cmdOK")}), 2U);
    EXPECT_EQ(chart(1).GetNotes(), "cut 3\r\npH 7.4\r\n");
    EXPECT_FALSE(isSaved());
    EXPECT_TRUE(prompts.shown.empty());
}

TEST_F(TextWindowsTest, CancelAndTheCloseBoxAskAboutChangedNotes) {
    for (const auto &leave : {clicking("cmdCancel"), closeBox()}) {
        prompts.shown.clear();
        EXPECT_EQ(notes({leave}), 1U);
        EXPECT_TRUE(prompts.shown.empty());

        prompts.answers = {BoxAnswer::Cancel, BoxAnswer::Cancel, BoxAnswer::No};
        EXPECT_EQ(notes({typing("x"), leave, closeBox(), leave}), 4U);
        EXPECT_EQ(prompts.shown.at(0).text, "Your notes have been changed\rSave changes ?");
        EXPECT_EQ(chart(1).GetNotes(), "");
        EXPECT_TRUE(isSaved());

        prompts.answers = {BoxAnswer::Yes};
        EXPECT_EQ(notes({typing("x"), leave}), 2U);
        EXPECT_EQ(chart(1).GetNotes(), "x");
        EXPECT_FALSE(isSaved());
    }
}

} // namespace
