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
    TabStates tabs;
    FakeChartLog Chart0;
    FakeChartLog Chart5;
    FakeChartLog Chart6;
    FakeClock clock;
    FakeTimer TimerSaveLog{clock, 20000};
    FakeLogWindow window;
    FakeCommonDialog ComDlg;
    FakeErrorRoute errors;
    RunningLog log{{link, tabs, identity, [] { return QString("/Log/own/"); }},
                   run,
                   options,
                   state,
                   {Chart0, Chart5, Chart6},
                   TimerSaveLog,
                   window,
                   ComDlg,
                   errors};
};

TEST_F(RunningLogTest, underTheOfferOfALeftOverTheLogGoesElsewhereAndCannotBeSaved) {
    TimerSaveLog.setEnabled(true);
    identity.InstanceTag.clear();
    log.TimerSaveLog_Timer();
    EXPECT_EQ(Chart5.written, QStringList("/Log/own/ 20000"));
    EXPECT_FALSE(window.enabled);
}

TEST_F(RunningLogTest, whatTheLogChartHasNoPartInIsWrittenBesideIt) {
    log.write();
    run.BesideLog = true;
    log.write(); // it is saved
    EXPECT_TRUE(Chart0.written.isEmpty());
    tabs.ChartSaved[recorderChart] = false;
    Chart5.status = 61; // on a full disk each is tried, and the failure told
    EXPECT_EQ(log.write(), 61);
    EXPECT_EQ(Chart0.written, QStringList("/Log/17/ 20000"));
}

TEST_F(RunningLogTest, aTickThatFailsIsToldAndTheNextOneTriesAgain) {
    TimerSaveLog.setEnabled(true);
    Chart5.status = 61;
    errors.reaction = [](qint32) { throw RunTimeError(RunTimeError::DiskFull); }; // no room for the error log either
    EXPECT_THROW(log.TimerSaveLog_Timer(), RunTimeError);
    EXPECT_EQ(errors.codes, std::vector<qint32>{61});
    EXPECT_FALSE(window.enabled);
    Chart5.status = 0;
    log.TimerSaveLog_Timer();
    EXPECT_TRUE(window.enabled);
    window.enabled = false;
    TimerSaveLog.finish(); // the link is lost
    EXPECT_FALSE(window.enabled);
    EXPECT_EQ(Chart5.written, QStringList({"/Log/17/ 20000", "/Log/17/ 20000", "/Log/17/ 20000"}));
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
    run.LogEndPending = run.LogPausePending = run.LogPaused = true;
    log.mnuLogOn_Click();
    EXPECT_TRUE(TimerSaveLog.Enabled());
    EXPECT_EQ(run.LogEventNumber, 7);
    EXPECT_FALSE(run.LogEndPending || run.LogPausePending || run.LogPaused);
    log.mnuLogOff_Click();
    EXPECT_FALSE(options.DataLogging || window.logging || TimerSaveLog.Enabled());
}

} // namespace
