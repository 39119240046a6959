// SPDX-License-Identifier: MIT
#include "acquisition/LinkedTest.h"
#include "fakes/AllocationProbe.h"

class SampleIntakeTest : public LinkedTest {};

TEST_F(SampleIntakeTest, ARunThatIsReportedByBlocks) {
    play("R1 . . E2 . R2 . . R1 . E2 . R3 . R1 . E8 . R0 . .");
    EXPECT_EQ(marks(), "S 1 P 2 H C M E");
    EXPECT_EQ(logMarks(), "S 1 P 2 H C M E");
    EXPECT_EQ(count(chart), 10);
    EXPECT_EQ(chart.data().marks[1].color, 0x00FF00);
    EXPECT_FALSE(run.Recording || run.ChartRunActive);
    EXPECT_EQ(window.told.join(' '), "green SyncFound Record Stop");
}

TEST_F(SampleIntakeTest, ARunThatIsReadFromLettersAndEvents) {
    play("E4 v . u . . v E2 v E3 v v");
    EXPECT_EQ(marks(), "S P 1 E"); // the pause shows with the second "u", the end a sample after its event
    EXPECT_EQ(logMarks(), "S P 1 E");
    EXPECT_FALSE(run.Recording);
}

TEST_F(SampleIntakeTest, AStartIsDroppedByULetterAndConfirmedByASecondStart) {
    play("E4 u v v");
    EXPECT_EQ(marks(), "");
    play("E4 E4 u");
    EXPECT_EQ(marks(), "S");
}

TEST_F(SampleIntakeTest, StatusBlocksEndTheReadingOfLetters) {
    play("R1 v u u u");
    EXPECT_EQ(marks(), "S");
    EXPECT_EQ(count(chart), 4);
}

TEST_F(SampleIntakeTest, ANumberGoesBeforeAWaitingEnd) {
    play("R1 . R0 E2 . . .");
    EXPECT_EQ(marks(), "S 1 E");
    EXPECT_EQ(logMarks(), "S 1 E");
}

TEST_F(SampleIntakeTest, OutsideARunAPauseLeavesNothing) {
    play("P1 . R2 . .");
    EXPECT_EQ(marks(), "");
    EXPECT_EQ(logMarks(), "");
    EXPECT_EQ(count(chart), 3);
}

TEST_F(SampleIntakeTest, ARunThatEndsInAPauseLeavesTheSessionOn) {
    play("R1 . R2 . E2 . R0 . .");
    EXPECT_EQ(marks(), "S P 1 E");
    EXPECT_EQ(logMarks(), "S P"); // the log's pause ends only with the next running
    EXPECT_EQ(count(chart), 3);
    EXPECT_TRUE(run.Recording);
    EXPECT_FALSE(run.ChartPaused);
}

TEST_F(SampleIntakeTest, AWaitingLabelIsDrawnByTheNextSession) {
    play("P1 R1 P0 . P1 .");
    EXPECT_EQ(marks(), "S");
    EXPECT_EQ(count(chart), 1);
}

TEST_F(SampleIntakeTest, TheLogRunsOnAcrossSessionsAndMarksASampleBehind) {
    play(". . E8 .");
    EXPECT_EQ(count(log), 4);
    EXPECT_FLOAT_EQ(log.data().marks.at(0).time, 2 / 300.0F);
    EXPECT_FLOAT_EQ(run.LogTime, 3 / 300.0F);
    options.DataLogging = false;
    play("E2 . R1 .");
    EXPECT_EQ(count(log), 4);
    EXPECT_EQ(run.LogEventNumber, 0);
    EXPECT_TRUE(run.LogRunActive);
}

TEST_F(SampleIntakeTest, TheMethodIsTakenUpTo15SecondsBehindTheEnd) {
    using namespace std::chrono_literals;
    play("R1 . R0 . MFirst");
    ASSERT_EQ(chart.data().methodTexts.size(), 1);
    EXPECT_EQ(chart.data().methodTexts[0].text.section("\r\n", 1), "First\r\n");
    EXPECT_FALSE(run.WaitForMethod || TimerStopWaitForMethod.Enabled());

    play("R1 . R0 .");
    TimerCheckComData.setEnabled(false);
    clock.advance(15s);
    play("MLate");
    EXPECT_EQ(chart.data().methodTexts.size(), 1);
    EXPECT_EQ(log.data().methodTexts.size(), 2);
}

TEST_F(SampleIntakeTest, AFullChartStopsBothAndTheBlockIsFinished) {
    play("R1 .");
    while (count(chart) < SampleStore::chunkSize) // the next one needs new memory
        chart.AddSample(0, 0);
    const AllocationProbe::OutOfMemory full(100000);
    play(". .");
    EXPECT_EQ(errors.codes, std::vector<qint32>{-15});
    EXPECT_FALSE(run.Recording || options.DataLogging || TimerSaveLog.Enabled());
    EXPECT_EQ(ring.ByteCount(), 0);
}

TEST_F(SampleIntakeTest, NumbersBeyond16BitsAreAnOverflow) {
    play("R1 .");
    run.ChartEventNumber = 32767;
    EXPECT_EQ(errorNumberOf([&] { play("E2 ."); }), ErrorNumber::Overflow);
    EXPECT_EQ(marks(), "S");
}
