// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

namespace {

class LastNetTest : public testing::Test, protected ProgramFixture {};

TEST_F(LastNetTest, anErrorEndsItsRoutineAndTheProgramLivesOn) {
    start();
    link();
    QDir().mkdir(path("ChartErr.log")); // so that each decoding error raises one in the program
    prompts.whileShown = [this](const MessageBox &) {
        EXPECT_EQ(entries("Log/" + logDirectories().value(0)).size(), 1); // the log was written at once
        play(". .");                                                      // the samples go on arriving under the box
        clock.advance(700ms);
    };
    play("P1 . E5 . .");
    EXPECT_EQ(chart(0).SampleCount(), 5);
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_TRUE(told().startsWith("Run-time error '75':\n\n"));
    EXPECT_EQ(prompts.shown[0].icon, BoxIcon::Critical);
    EXPECT_FALSE(process.ended);
}

TEST_F(LastNetTest, anErrorThatKeepsComingIsToldOnceAndCountedAMinute) {
    QStringList entered;
    LastNet net({prompts, clock, [] { throw std::bad_alloc(); }, [&](const QString &message) { entered << message; }});
    const auto fail = [&](const char *place, int error = ErrorNumber::Overflow) {
        net.run(place, [error] { throw RunTimeError(error); });
    };
    for (int second = 0; second <= 150; ++second, clock.advance(1s))
        fail("TimerProcess_Timer");
    EXPECT_EQ(prompts.shown.size(), 1U);
    ASSERT_EQ(entered.size(), 2);
    EXPECT_EQ(entered[1], "Run-time error '6': Overflow (TimerProcess_Timer, 60 times)");
    fail("elsewhere");
    fail("elsewhere", ErrorNumber::DialogCancelled);
    net.run("TimerProcess_Timer", [] { throw std::bad_alloc(); });
    EXPECT_EQ(prompts.shown.size(), 3U);
    EXPECT_EQ(prompts.shown[2].text, "Run-time error '7':\n\nOut of memory");

    clock.advance(2min);                           // of quiet
    prompts.whileShown = [&](const MessageBox &) { // which nobody answers
        fail("a third place");                     // with the same words
        for (int i = 0; i < 2; ++i, clock.advance(2min))
            fail("elsewhere");
    };
    fail("elsewhere");
    EXPECT_EQ(prompts.shown.size(), 4U);
    EXPECT_EQ(entered.last(), "Run-time error '6': Overflow (elsewhere, 2 times)");
}

TEST_F(LastNetTest, aStartThatCannotBeCompletedSaysWhatToDo) {
    put("Log");
    start();
    EXPECT_TRUE(process.ended);
    EXPECT_TRUE(told().startsWith("Run-time error '58':"));
    EXPECT_TRUE(told().contains("named above is in the way"));
    EXPECT_TRUE(startFailedBox(RunTimeError(ErrorNumber::DiskFull), "/data").text.contains("disk of /data"));
}

TEST_F(LastNetTest, aLogThatCannotBeWrittenIsToldOnce) {
    start();
    link();
    QDir(path("Log")).removeRecursively();
    put("Log");
    QDir().mkdir(path("ChartErr.log")); // no more can that be told
    for (int i = 0; i < 20; ++i) {
        play(".");
        clock.advance(3s);
    }
    EXPECT_EQ(prompts.shown.size(), 1U);
}

TEST_F(LastNetTest, theComputerStaysAwakeExactlyWhileRecordingOrLoggingIsAtWork) {
    start();
    EXPECT_FALSE(sleep.held); // logging waits for the stream
    link();
    EXPECT_TRUE(sleep.held);
    trigger("mnuLogOff");
    EXPECT_FALSE(sleep.held);
    play("R1 .");
    EXPECT_TRUE(sleep.held);
    timers["TimerCheckComData"]->tick(); // the link goes on behind a look of the watchdog, and so does logging
    trigger("mnuLogOn");
    play("R0 .");
    EXPECT_TRUE(sleep.held);
    meanwhile([this] {
        clock.advance(700ms); // the link is lost, and told
        EXPECT_FALSE(sleep.held);
        click("cmdOk");
    });
    clock.advance(10s);
}

} // namespace
