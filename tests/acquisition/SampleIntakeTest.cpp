// SPDX-License-Identifier: MIT
#include "acquisition/LinkedTest.h"
#include "fakes/AllocationProbe.h"

class SampleIntakeTest : public LinkedTest {};

struct Told {
    const char *stream, *marks, *logMarks; ///< the last two: of the recorder's chart and of the log's
    int samples;                           ///< of the recorder's
    bool recording;                        ///< goes on
};

class SampleIntakeOf : public SampleIntakeTest, public testing::WithParamInterface<Told> {};

TEST_P(SampleIntakeOf, MarksEachNewsInBothCharts) {
    play(GetParam().stream);
    EXPECT_EQ(marks(chart), GetParam().marks);
    EXPECT_EQ(marks(log), GetParam().logMarks);
    EXPECT_EQ(count(chart), GetParam().samples);
    EXPECT_EQ(run.Recording, GetParam().recording);
    EXPECT_FALSE(run.ChartPaused);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Runs, SampleIntakeOf, testing::Values(
    Told{"R1 . . E2 . R2 . . R1 . E2 . R3 . R1 . E8 . R0 . .", "S 1 P 2 H C M E", "S 1 P 2 H C M E", 10, false},
    Told{"R1 . E2 . R0 . . R1 . E2 . E2 . R0 . .",             "S 1 E S 1 2 E",   "S 1 E S 1 2 E",   7,  false},
    // By letters and events: the pause shows with the second "u", the end a sample after its event.
    Told{"E4 v . u . . v E2 v E3 v v",                         "S P 1 E",         "S P 1 E",         7,  false},
    Told{"E4 u v v",                                           "",                "",                0,  false}, // no start
    Told{"E4 u v v E4 E4 u",                                   "S",               "S",               1,  true},  // but two
    Told{"R1 v u u u",                                         "S",               "S",               4,  true},
    Told{"R1 . R0 E2 . . .",                                   "S 1 E",           "S 1 E",           3,  false},
    Told{"P1 . R2 . .",                                        "",                "",                3,  true}, // no run
    // The log's pause ends only with the next running, and the session stays on.
    Told{"R1 . R2 . E2 . R0 . .",                              "S P 1 E",         "S P",             3,  true},
    // A label that waits is drawn by the next session.
    Told{"P1 R1 P0 . P1 .",                                    "S",               "S",               1,  true}));
// clang-format on

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

    for (const char *end : {"R1 . R0 .", "R1 . R0 ."}) { // the second one within the wait of the first
        play(end);
        clock.advance(9s);
    }
    play("MSecond");
    EXPECT_EQ(chart.data().methodTexts.size(), 2);
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
