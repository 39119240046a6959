// SPDX-License-Identifier: MIT
#include "documents/RunningLog.h"

#include "base/RunTimeError.h"
#include "fakes/FakeChartLog.h"
#include "fakes/FakeCommonDialog.h"
#include "fakes/FakeErrorRoute.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

class FakeLogWindow : public LogWindow {
public:
    void enableSaveLog(bool on) override { enabled = on; }
    bool saveLogEnabled() const override { return enabled; }
    void showLogging(bool on) override { logging = on; }

    bool enabled = false;
    bool logging = false;
};

/// A log in "/Log/17/", which holds something once a tick has succeeded.
class RunningLogTest : public testing::Test {
protected:
    RunningLogTest() {
        identity.InstanceTag = "17";
        identity.LogDirectory = "/Log/17/";
        identity.SystemName = "Anna 2";
        TimerSaveLog.Tick = [this] { log.TimerSaveLog_Timer(); };
    }
    void save(const QString &answer) {
        ComDlg.answers = {answer};
        log.mnuSaveLog_Click();
    }

    LinkState link;
    Identity identity;
    RunState run;
    Options options;
    LogState state;
    FakeChartLog Chart5;
    FakeChartLog Chart6;
    FakeClock clock;
    FakeTimer TimerSaveLog{clock, 20000};
    FakeLogWindow window;
    FakeCommonDialog ComDlg;
    FakeErrorRoute errors;
    RunningLog log{{link, identity}, run, options, state, Chart5, Chart6, TimerSaveLog, window, ComDlg, errors};
};

TEST_F(RunningLogTest, nothingIsWrittenBeforeThisCopyHasItsDirectory) {
    identity.InstanceTag.clear();
    log.TimerSaveLog_Timer();
    EXPECT_TRUE(Chart5.written.isEmpty() && errors.codes.empty());
}

TEST_F(RunningLogTest, aTickThatFailsIsToldAndTheNextOneTriesAgain) {
    Chart5.status = 61;
    errors.reaction = [](qint32) { throw RunTimeError(RunTimeError::DiskFull); }; // no room for the error log either
    log.TimerSaveLog_Timer();
    EXPECT_EQ(errors.codes, std::vector<qint32>{61});
    EXPECT_FALSE(window.enabled);
    Chart5.status = 0;
    log.TimerSaveLog_Timer();
    EXPECT_TRUE(window.enabled);
    EXPECT_EQ(Chart5.written, QStringList({"/Log/17/ 20000", "/Log/17/ 20000"}));
}

TEST_F(RunningLogTest, whatDoesNotSaveTheLogIsToldAndLeavesTheCommand) {
    window.enabled = true;
    save("/runs/a.chl"); // there is no log
    EXPECT_TRUE(state.LogSaved);
    Chart5.logs = {"/Log/17"};
    Chart6.status = 1;
    save("/runs/a.chl");
    EXPECT_FALSE(state.LogSaved);
    save(""); // a Cancel
    EXPECT_FALSE(state.LogSaved);
    EXPECT_EQ(errors.codes, (std::vector<qint32>{-22, -17, RunTimeError::DialogCancelled}));
    EXPECT_TRUE(window.enabled && ComDlg.CancelError);
}

TEST_F(RunningLogTest, loggingBeginsAtOnceWhenDataComeIn) {
    options.DataLogging = false;
    log.mnuLogOn_Click();
    EXPECT_TRUE(options.DataLogging && window.logging && !TimerSaveLog.Enabled());
    link.ComDataSeen = true;
    run.ChartEventNumber = 7;
    run.LogEndPending = run.LogPausePending = true;
    log.mnuLogOn_Click();
    EXPECT_TRUE(TimerSaveLog.Enabled());
    EXPECT_EQ(run.LogEventNumber, 7);
    EXPECT_FALSE(run.LogEndPending || run.LogPausePending);
    log.mnuLogOff_Click();
    EXPECT_FALSE(options.DataLogging || window.logging || TimerSaveLog.Enabled());
}

} // namespace
