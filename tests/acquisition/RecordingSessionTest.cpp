// SPDX-License-Identifier: MIT
#include "acquisition/LinkedTest.h"

using namespace std::chrono_literals;

class RecordingSessionTest : public LinkedTest {};

TEST_F(RecordingSessionTest, RecordAndStopRunWholeEachTime) {
    tabs.ChartSaved[0] = true;
    play("P1 E2 . P1");
    EXPECT_EQ(run.ChartEventNumber, 0);
    EXPECT_FALSE(tabs.ChartSaved[0]);
    play("P0 P0");
    EXPECT_EQ(window.told.mid(2).join(' '), "Record Record Stop Stop");
}

TEST_F(RecordingSessionTest, ALostLinkIsToldWithin10Seconds) {
    play("R1 . E8");
    window.told.clear();
    clock.advance(4s);
    EXPECT_EQ(window.told.size(), 0);
    clock.advance(6s);
    EXPECT_EQ(window.told.join(' '), "black Stop LinkLost no data");
    EXPECT_TRUE(notices.at(News::LinkLost).startsWith("No data is being received|The recording has stopped."));
    EXPECT_FALSE(run.Recording || link.FirstSyncFound || link.DataBusy);
    EXPECT_FALSE(TimerCheckComData.Enabled() || TimerSaveLog.Enabled());
    EXPECT_TRUE(run.ChartLabelType == Label::None && run.LogLabelType == Label::M);

    clock.advance(60s);
    play(".");
    EXPECT_EQ(window.told.mid(4).join(' '), "green SyncFound");
    EXPECT_EQ(notices.standing.size() + notices.shown, 1U); // the loss, which is over
    EXPECT_TRUE(TimerCheckComData.Enabled() && TimerSaveLog.Enabled());
}

TEST_F(RecordingSessionTest, AnEndByTheInstrumentIsNewsAndTheOperatorsOwnIsNone) {
    const auto newsAfter = [this](const char *script) {
        play(script);
        return notices.at(News::RunEnded).section('|', 0, 0);
    };
    EXPECT_EQ(newsAfter("R1 . . R0 ."), "The run has ended");
    EXPECT_EQ(newsAfter("P1 ."), ""); // outdated
    EXPECT_EQ(newsAfter("P0 P0"), "The instrument has stopped the recording");
    EXPECT_EQ(newsAfter("R1 . R2 . R0 ."), "The run has ended in a pause");
    EXPECT_EQ(notices.shown, 3);
    commands.run("mnuStart");
    commands.run("mnuStop");
    EXPECT_EQ(newsAfter(". P0"), "");
}

TEST_F(RecordingSessionTest, AnyOtherEventOfThePortIsToldAndHoldsOffTheAlarm) {
    for (int i = 0; i < 10; ++i) {
        clock.advance(4s);
        ComPort.raise(ErrorNumber::Break);
    }
    EXPECT_FALSE(window.told.contains("no data"));
    EXPECT_EQ(errors.codes, std::vector<qint32>(10, ErrorNumber::Break));
}

TEST_F(RecordingSessionTest, ARunKnowsWhenAndWhereEachOfItsStretchesWasRecorded) {
    values.identity.SystemName = "Velquin 2";
    directory.facts[1].device = "/dev/ttyUSB0";
    const QDateTime begin = clock.now();
    play("R1 . . .");
    play(". . .");
    commands.run("mnuStop");
    play(". . .");
    commands.run("mnuStart");
    play(". . .");
    clock.shift += 1h; // somebody sets the clock
    play(". . .");
    clock.advance(4s); // the computer has slept
    play(". .");
    const Provenance &known = chart.data().provenance;
    EXPECT_EQ(known.identity.size(), 32);
    EXPECT_TRUE(known.system == "Velquin 2" && known.program.startsWith("Ostrel MS ") && known.interval == 0.2);
    EXPECT_EQ(known.device, "/dev/ttyUSB0");
    ASSERT_EQ(known.stretches.size(), 3U);
    EXPECT_LE(std::abs(begin.secsTo(known.begun())), 1);
    EXPECT_EQ(known.stretches[0].to, ChartData::timeOf(5));
    EXPECT_EQ(known.stretches[1].from, ChartData::timeOf(6));
    EXPECT_EQ(known.stretches[2].from, ChartData::timeOf(12));
    EXPECT_LT(known.ended().msecsTo(clock.now()), 700);
    ASSERT_EQ(known.clockSteps.size(), 1U);
    EXPECT_EQ(known.clockSteps[0].seconds, 3600);
    EXPECT_GT(known.dateAt(known.stretches[1].to).msecsTo(clock.now()), 4000);
    EXPECT_EQ(log.data().provenance.stretches.size(), 2U); // the log has not been stopped
    EXPECT_NE(log.data().provenance.identity, known.identity);
}
