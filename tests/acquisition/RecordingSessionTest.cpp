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
    EXPECT_FALSE(run.Recording || link.FirstSyncFound || link.DataBusy);
    EXPECT_FALSE(TimerCheckComData.Enabled() || TimerSaveLog.Enabled());
    EXPECT_TRUE(run.ChartLabelType == Label::None && run.LogLabelType == Label::M);

    clock.advance(60s);
    play(".");
    EXPECT_EQ(window.told.mid(4).join(' '), "green SyncFound");
    EXPECT_TRUE(TimerCheckComData.Enabled() && TimerSaveLog.Enabled());
}

TEST_F(RecordingSessionTest, AnyOtherEventOfThePortIsToldAndHoldsOffTheAlarm) {
    for (int i = 0; i < 10; ++i) {
        clock.advance(4s);
        ComPort.raise(ErrorNumber::Break);
    }
    EXPECT_FALSE(window.told.contains("no data"));
    EXPECT_EQ(errors.codes, std::vector<qint32>(10, ErrorNumber::Break));
}
