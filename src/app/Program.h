// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/DataReceiver.h"
#include "acquisition/PortSearch.h"
#include "acquisition/PortSetup.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/RecordingSession.h"
#include "acquisition/RunNews.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/StreamDecoder.h"
#include "app/Platform.h"
#include "base/Values.h"
#include "documents/ClearAndClose.h"
#include "documents/ErrorReporter.h"
#include "documents/OpenFiles.h"
#include "documents/SaveFiles.h"
#include "documents/Settings.h"
#include "view/AxisPanels.h"
#include "view/ChartTabs.h"
#include "view/CommandStates.h"
#include "view/Commands.h"
#include "view/FileWindow.h"
#include "view/LiveView.h"
#include "view/NumericKeys.h"
#include "view/SetupForm.h"
#include "view/TimeAxis.h"
#include "view/WindowPorts.h"
#include "view/frmMain.h"

/// The timers of the main window.
struct MainTimers {
    std::unique_ptr<Timer> Process;
    std::unique_ptr<Timer> CheckComData;
    std::unique_ptr<Timer> StopWaitForMethod;
    std::unique_ptr<Timer> SaveLog;
};

/// Makes one of each part of the recorder and binds them to each other: the place where all meet.
class Program {
public:
    explicit Program(const Platform &platform);

    /// Loads the main window, shows it and starts the watch over the link. False when the program has no port and is
    /// on its way out.
    bool start();

private:
    WindowActs windowActs();
    void bindEvents();
    void bindCommands();
    bool loadWindow();
    void unload();

    Platform platform_;
    Values values_;
    Commands commands_;
    frmMain window_;
    MainTimers timers_;

    ErrorReporter errors_;
    Settings settings_;

    NumericKeys keys_;
    AxisPanels axes_;
    TimeAxis time_;
    LiveView live_;
    CommandStates states_;
    ChartTabs tabs_;
    WindowPorts ports_;
    FileWindow fileWindow_;

    OpenFiles openFiles_;
    SaveFiles saveFiles_;
    ClearAndClose clearAndClose_;

    ReceiveRing ring_;
    DataReceiver receiver_;
    RunNews news_;
    SampleIntake intake_;
    StreamDecoder decoder_;
    RecordingSession session_;

    SetupForm setupForm_;
    PortSetup setup_;
    PortSearch search_;
};
