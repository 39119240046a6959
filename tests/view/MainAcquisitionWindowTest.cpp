// SPDX-License-Identifier: MIT
#include "view/MainAcquisitionWindow.h"

#include "acquisition/RecordingSession.h"
#include "view/ViewFixture.h"

namespace {

/// A recording session that drives the view, as in the program.
class MainAcquisitionWindowTest : public ViewTest {
protected:
    MainAcquisitionWindowTest() {
        commands.bind("mnuComPort", [this] { told << "setup"; });
        commands.bind("mnuExit", [this] { told << "exit"; });
    }

    NoDataAnswer answer = NoDataAnswer::Ok;
    std::function<void()> whileNoData = [] {};
    bool ledOn = true;
    FakeClock clock;
    FakeTimer TimerCheckComData{clock, 5000};
    FakeTimer TimerSaveLog{clock, 20000};
    Commands commands;
    MainAcquisitionWindow ports{states,
                                live,
                                commands,
                                {[this](bool on) { ledOn = on; }, [this] { ++chartFocused; },
                                 [this] {
                                     told << "no data";
                                     whileNoData();
                                     return answer;
                                 }}};
    RecordingSession session{run, values.link, tabs, TimerCheckComData, TimerSaveLog, ports};
};

TEST_F(MainAcquisitionWindowTest, LostLinkEndsTheSessionAndRunsWhatTheOperatorAnswers) {
    whileNoData = [this] { session.TimerCheckComData_Timer(); }; // lost again: no second dialog over the first
    session.mnuStart_Click();
    answer = NoDataAnswer::Setup;
    session.TimerCheckComData_Timer();
    EXPECT_FALSE(run.Recording || ledOn || on("mnuStart") || on("cmdStop"));
    answer = NoDataAnswer::Exit;
    session.TimerCheckComData_Timer();
    EXPECT_EQ(told.join(", "), "no data, setup, no data, exit");
}

TEST_F(MainAcquisitionWindowTest, LinkLostAgainIsToldOverWhatTheFirstAnswerOpened) {
    commands.bind("mnuComPort", [this] {
        answer = NoDataAnswer::Exit;
        session.TimerCheckComData_Timer();
    });
    answer = NoDataAnswer::Setup;
    session.TimerCheckComData_Timer();
    EXPECT_EQ(told.join(", "), "no data, no data, exit");
}

} // namespace
