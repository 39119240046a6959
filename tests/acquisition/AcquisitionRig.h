// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/Acquisition.h"
#include "acquisition/StreamFormat.h"
#include "fakes/FakeErrorRoute.h"
#include "fakes/FakePlatform.h"

#include <QStringList>

#include <functional>
#include <vector>

/// A window of the test's own: it keeps a log of what it was told.
class FakeWindow : public AcquisitionWindow, public SetupDialog {
public:
    void commandsAt(Moment moment) override {
        static constexpr const char *names[] = {"LinkLost", "SyncFound", "Record", "Stop"};
        told << QLatin1String(names[int(moment)]);
    }
    void showNow(std::optional<float>, const std::optional<SamplePair> &) override {}
    void setReceiveLed(bool on) override { told << QLatin1String(on ? "green" : "black"); }
    void UpdateLiveView() override { ++liveUpdates; }
    void recorderToEnd() override {}
    void focusChart() override { throw RunTimeError(ErrorNumber::InvalidProcedureCall); } // a window that is not up yet
    void showNoData() override {
        told << QLatin1String("no data");
        whileNoData();
    }

    void show(PortSetup &, bool mayCancel) override {
        showings << QLatin1String(mayCancel ? "may cancel" : "must choose");
        whileSetup();
    }

    QStringList told;
    int liveUpdates = 0;
    std::function<void()> whileNoData = [] {};
    QStringList showings; ///< of the port's dialog
    std::function<void()> whileSetup = [] {};
};

/// The whole way from the serial port to the charts, on a desktop, a window and charts of the test's own.
class AcquisitionRig {
public:
    AcquisitionRig() {
        ComPort.setPortOpen(true);
        acquisition.bind(commands, [](const char *, std::function<void()> routine) { return routine; });
        ComPort.setRThreshold(1); // every arrival is seen at once
        errors.reaction = [this](qint32 code) { react(code); };
    }

    Values values;
    Options &options = values.options;
    LinkState &link = values.link;
    RunState &run = values.run;
    TabStates &tabs = values.tabs;
    FakeClock clock;
    const MainTimers timers{std::make_unique<FakeTimer>(clock, 700, true), std::make_unique<FakeTimer>(clock, 5000),
                            std::make_unique<FakeTimer>(clock, 15000), std::make_unique<FakeTimer>(clock, 20000)};
    Timer &TimerProcess = *timers.Process;
    Timer &TimerCheckComData = *timers.CheckComData;
    Timer &TimerStopWaitForMethod = *timers.StopWaitForMethod;
    Timer &TimerSaveLog = *timers.SaveLog;
    FakeSerialControl ComPort;
    FakeSerialControl CommTmp;
    FakePortDirectory directory;
    Run chart;
    Run log;
    FakeErrorRoute errors;
    FakeNotices notices;
    FakePrompts prompts;
    FakeWindow window;
    Commands commands;
    std::function<void()> whileOutOfMemory = [] {}; ///< what happens while the operator reads that box

    Acquisition acquisition{{values, ComPort, CommTmp, directory, timers, chart, log, commands, window, window, prompts,
                             errors, notices, clock}};
    ReceiveRing &ring = acquisition.ring;
    RecordingSession &session = acquisition.session;
    StreamDecoder &decoder = acquisition.decoder;

private:
    /// What the error route does beyond telling.
    void react(qint32 code) {
        if (code <= -10 && code >= -12)
            link.FirstSyncFound = false;
        if (code != -15)
            return;
        whileOutOfMemory();
        commands.run("mnuStop");
        options.DataLogging = false;
        TimerSaveLog.setEnabled(false);
    }
};
