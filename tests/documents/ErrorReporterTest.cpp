// SPDX-License-Identifier: MIT
#include "documents/ErrorReporter.h"

#include "base/Numbers.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestFolder.h"

#include <gtest/gtest.h>

namespace {

struct ErrorReporterTest : testing::Test {
    QString log() const { return folder.content("ChartErr.log"); }
    /// The entry that the log must hold for one message.
    QString entry(const QString &message) const { return generalDate(clock.now()) + "\r\n" + message + "\r\n"; }

    TestFolder folder;
    LinkState link;
    CurrentError error;
    FakePrompts prompts;
    Commands commands;
    FakeSerialControl ComPort;
    FakeClock clock;
    ErrorReporter reporter{link, prompts, commands, {error, ComPort, clock}, folder.at("ChartErr.log")};
};

TEST_F(ErrorReporterTest, aDecodingErrorIsLoggedWithItsDumpAndEndsTheSync) {
    link.FirstSyncFound = true;
    link.DebugText = "Sub PeekDataBlock; 7\r\n 1 2 3";
    reporter.HandelError(-10);
    EXPECT_FALSE(link.FirstSyncFound);
    EXPECT_EQ(prompts.beeps, 1);
    EXPECT_EQ(log(), entry("ERROR - Lost Sync.Sub PeekDataBlock; 7\r\n 1 2 3"));

    // The text of an earlier failure follows every later entry.
    link.DebugText = "älter";
    reporter.HandelError(1001);
    EXPECT_TRUE(log().endsWith(entry("ERROR - Break signal received.älter")));
}

TEST_F(ErrorReporterTest, outOfMemoryStopsEverythingOnceItsBoxIsRead) {
    QStringList ran;
    for (const char *command : {"mnuStop", "mnuLogOff"})
        commands.bind(command, [&ran, command] { ran << command; });
    prompts.whileShown = [&](const MessageBox &) { EXPECT_TRUE(ran.isEmpty()); };
    reporter.HandelError(-15);
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_EQ(prompts.shown[0].caption, "");
    EXPECT_EQ(ran, (QStringList{"mnuStop", "mnuLogOff"}));
    EXPECT_EQ(log(), "missing");
}

TEST_F(ErrorReporterTest, lineChangesAndCharacterErrorsAreSilentAndAllElseIsLoggedByItsDescription) {
    for (const int code : {1, 4, 5, 6, 7, 1004, 1009})
        reporter.HandelError(code);
    ComPort.pretendedCount = 32000;
    reporter.HandelError(3);
    EXPECT_EQ(prompts.beeps, 0);
    ComPort.pretendedCount = 32001;
    reporter.HandelError(3);
    QString expected = entry("ERROR - Communication buffer full.");
    for (const int code : {-26, -23, -9, 0, 2, 8, 53, 1005, 8002}) {
        reporter.HandelError(code);
        expected += entry(RunTimeError::describe(code));
    }
    EXPECT_EQ(log(), expected);
    EXPECT_TRUE(prompts.shown.empty());
}

} // namespace
