// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

namespace {

class RunningLogTest : public StartedProgram {
protected:
    void save(const QString &file) {
        ComDlg.answers = {file};
        trigger("mnuSaveLog");
    }
};

TEST_F(RunningLogTest, whatDoesNotSaveTheLogIsToldAndLeavesTheCommand) {
    link();
    timers["TimerSaveLog"]->tick();
    save(path("none/a.chl"));
    EXPECT_TRUE(told().endsWith("Unable to save the log file"));
    save(""); // a Cancel
    EXPECT_EQ(prompts.shown.size(), 1U);
    EXPECT_TRUE(enabled("mnuSaveLog"));
    save(path("a.chl"));
    EXPECT_TRUE(exists("a.chl"));
    EXPECT_FALSE(enabled("mnuSaveLog"));

    trigger("mnuLogOff"); // nothing writes it again
    QDir(path("Log")).removeRecursively();
    commands("mnuSaveLog");
    EXPECT_TRUE(told().endsWith("Serious Data Error! Most recent data collected is permanently lost."));
    EXPECT_EQ(ComDlg.shown.size(), 3U);
}

TEST_F(RunningLogTest, loggingBeginsAtOnceWhenDataComeInAndCountsAsTheRecorderDoes) {
    trigger("mnuLogOff");
    trigger("mnuLogOn");
    EXPECT_FALSE(timers["TimerSaveLog"]->Enabled());
    link();
    trigger("mnuLogOff");
    EXPECT_FALSE(timers["TimerSaveLog"]->Enabled() || pressed("cmdLogOn"));
    const int logged = chart(5).SampleCount();
    play("R1 . E2 . E2 . R2 . .");
    EXPECT_EQ(chart(5).SampleCount(), logged);
    trigger("mnuLogOn");
    EXPECT_TRUE(timers["TimerSaveLog"]->Enabled() && pressed("cmdLogOn"));
    play(". .");
    EXPECT_EQ(chart(5).SampleCount(), logged); // the run is paused
    play("R1 . E2 . R0 . .");
    EXPECT_EQ(marks(5).right(3), "3 E");
    EXPECT_EQ(marks(), "S 1 2 P 3 E");
}

} // namespace
