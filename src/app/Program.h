// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/DataReceiver.h"
#include "acquisition/PortSearch.h"
#include "acquisition/PortSetup.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/RecordingSession.h"
#include "acquisition/RunNews.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/StayAwake.h"
#include "acquisition/StreamDecoder.h"
#include "app/LastNet.h"
#include "app/Platform.h"
#include "app/ReportAdapters.h"
#include "app/ShellAdapters.h"
#include "base/Commands.h"
#include "base/Values.h"
#include "documents/ClearAndClose.h"
#include "documents/ErrorReporter.h"
#include "documents/OpenFiles.h"
#include "documents/RunningLog.h"
#include "documents/SaveFiles.h"
#include "documents/Settings.h"
#include "forms/HelpContext.h"
#include "reports/PrintRun.h"
#include "shell/FirstActivation.h"
#include "shell/Instances.h"
#include "shell/ProgramExit.h"
#include "shell/Recovery.h"
#include "shell/SystemNaming.h"
#include "shell/TextWindows.h"
#include "shell/frmDataRecovery.h"
#include "shell/frmStartup.h"
#include "view/AxisPanels.h"
#include "view/ChartTabs.h"
#include "view/Clicks.h"
#include "view/CommandStates.h"
#include "view/FileWindow.h"
#include "view/HelpMenu.h"
#include "view/LiveView.h"
#include "view/NumericKeys.h"
#include "view/SetupForm.h"
#include "view/TimeAxis.h"
#include "view/WindowPorts.h"
#include "view/frmMain.h"

/// The timers of the main window, and that of the splash window.
struct MainTimers {
    std::unique_ptr<Timer> LoadMain;
    std::unique_ptr<Timer> Process;
    std::unique_ptr<Timer> CheckComData;
    std::unique_ptr<Timer> StopWaitForMethod;
    std::unique_ptr<Timer> SaveLog;
};

/// Makes one of each part of the recorder and binds them to each other: the place where all meet.
class Program {
public:
    explicit Program(const Platform &platform);

    /// Shows the splash window; all else comes a second later.
    void start();

    /// The operator's answer to whether the program may end; ends nothing.
    bool askToEnd();
    /// What is on the screen and in the log goes to the disk, where the next start finds it.
    void writeLog() { exit_.writeLog(); }
    /// The end, the operator having agreed; or without having been asked.
    void endAgreed() { exit_.tearDown(); }
    void endUnasked() { exit_.endUnasked(); }
    /// An error that nobody has handled; `place` names who was at work.
    void meet(const RunTimeError &error, const QString &place) { net_.meet(error, place); }

private:
    /// A routine that Qt or the platform calls: nothing flies out of it, and the computer's sleep is settled behind it.
    std::function<void()> underNet(const char *place, std::function<void()> routine);
    void backToWork();
    WindowActs windowActs();
    Quillchart &chartInFront() { return window_.chart(values_.tabs.CurrentChart); }
    void mnuExport_Click();
    void bindEvents();
    void bindCharts();
    void bindCommands();
    void TimerLoadMain_Timer();
    void comeUp();
    bool loadWindow();

    Platform platform_;
    Values values_;
    Commands commands_;
    Clicks clicks_;
    frmMain window_;
    frmStartup splash_;
    MainTimers timers_;

    LastNet net_;
    StayAwake awake_;
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
    HelpMenu helpMenu_;
    HelpKey helpKey_;

    OpenFiles openFiles_;
    SaveFiles saveFiles_;
    ClearAndClose clearAndClose_;
    RunningLog log_;

    ShownTime shownTime_;
    PrintRun printRun_;

    ReceiveRing ring_;
    DataReceiver receiver_;
    RunNews news_;
    SampleIntake intake_;
    StreamDecoder decoder_;
    RecordingSession session_;

    SetupForm setupForm_;
    PortSetup setup_;
    PortSearch search_;

    MainShellWindow shellWindow_;
    std::vector<SettingRow> logInfo_; ///< LogInfoTable: what other copies and crashes had left in the store
    Instances instances_;
    Recovery recovery_;
    SystemNaming naming_;
    TextWindows textWindows_;
    FirstActivation activation_;
    ProgramExit exit_;
};
