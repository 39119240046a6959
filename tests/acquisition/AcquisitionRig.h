// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/DataReceiver.h"
#include "acquisition/RecordingSession.h"
#include "acquisition/RunNews.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/StreamDecoder.h"
#include "acquisition/StreamFormat.h"
#include "fakes/FakeChart.h"
#include "fakes/FakeErrorRoute.h"
#include "fakes/FakePlatform.h"

#include <QStringList>

#include <functional>
#include <vector>

/// A window of the test's own: it keeps a log of what it was told.
class FakeWindow : public AcquisitionWindow {
public:
    void commandsAt(Moment moment) override {
        static constexpr const char *names[] = {"LinkLost", "SyncFound", "Record", "Stop"};
        told << QLatin1String(names[int(moment)]);
    }
    void setReceiveLed(bool on) override {
        led = on;
        told << QLatin1String(on ? "green" : "black");
    }
    void UpdateLiveView() override { ++liveUpdates; }
    void recorderToEnd() override {
        if (endError != 0)
            throw RunTimeError(endError);
    }
    void focusChart() override {
        throw RunTimeError(RunTimeError::InvalidProcedureCall);
    } // a window that is not up yet
    void showNoData() override {
        ++noDataShown;
        if (whileNoData)
            whileNoData();
    }

    QStringList told;
    bool led = false;
    int liveUpdates = 0;
    int noDataShown = 0;
    std::function<void()> whileNoData;
    int endError = 0; ///< what setting the scroll bar to the end raises when not 0
};

/// The whole way from the serial port to the charts, on a desktop, a window and charts of the test's own.
class AcquisitionRig {
public:
    AcquisitionRig() {
        ComPort.setPortOpen(true);
        ComPort.OnComm = [this] { receiver.ComPort_OnComm(); };
        TimerProcess.Tick = [this] { decoder.TimerProcess_Timer(); };
        TimerCheckComData.Tick = [this] { session.TimerCheckComData_Timer(); };
        TimerStopWaitForMethod.Tick = [this] { intake.TimerStopWaitForMethod_Timer(); };
        errors.reaction = [this](qint32 code) { react(code); };
        commands.bind("mnuStart", [this] { session.mnuStart_Click(); });
        commands.bind("mnuStop", [this] { session.mnuStop_Click(); });
    }

    Commands commands;
    Options options;
    LinkState link;
    RunState run;
    TabStates tabs;
    FakeClock clock;
    FakeTimer TimerProcess{clock, 700, true};
    FakeTimer TimerCheckComData{clock, 5000};
    FakeTimer TimerStopWaitForMethod{clock, 15000};
    FakeTimer TimerSaveLog{clock, 20000};
    FakeSerialControl ComPort;
    FakeChart chart;
    FakeChart log;
    FakeErrorRoute errors;
    FakeWindow window;
    std::function<void()> whileOutOfMemory; ///< what happens while the operator reads that box

    ReceiveRing ring;
    DataReceiver receiver{ComPort, ring, link, TimerProcess, clock, errors};
    RunNews news{run, link};
    SampleIntake intake{run, tabs, chart, log, TimerStopWaitForMethod, commands, errors, options, clock};
    RecordingSession session{run, link, tabs, TimerCheckComData, TimerSaveLog, window};
    StreamDecoder decoder{ring,   link,     run,    news,    intake, {TimerProcess, TimerCheckComData, TimerSaveLog},
                          window, commands, errors, options, clock};

private:
    /// What the error route does beyond telling.
    void react(qint32 code) {
        if (code <= -10 && code >= -12)
            link.FirstSyncFound = false;
        if (code != -15)
            return;
        if (whileOutOfMemory)
            whileOutOfMemory();
        commands.run("mnuStop");
        options.DataLogging = false;
        TimerSaveLog.setEnabled(false);
    }
};
