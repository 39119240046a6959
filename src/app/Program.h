// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/Acquisition.h"
#include "acquisition/StayAwake.h"
#include "app/LastNet.h"
#include "app/MainShellWindow.h"
#include "app/MainZoomedTime.h"
#include "app/Platform.h"
#include "app/SystemNotices.h"
#include "base/Commands.h"
#include "base/Values.h"
#include "documents/Documents.h"
#include "forms/HelpContext.h"
#include "forms/WindowsOnScreen.h"
#include "reports/ChartMenu.h"
#include "reports/PrintRun.h"
#include "shell/Shell.h"
#include "shell/frmStartup.h"
#include "view/View.h"

namespace ostrel {

/// The recorder: makes one of each layer and binds them to each other, starts the program and ends it.
class Program {
public:
    explicit Program(const Platform &platform);

    /// Shows the splash window; everything else starts a second later.
    void start();

    /// Asks the operator whether the program may end; does not end it.
    bool askToEnd();
    /// Writes the data of the recorder and the log to the disk, where the next start finds it.
    void writeLog() { shell_.exit.writeLog(); }
    /// Ends the program after the operator has agreed, or without asking.
    void endAgreed() { shell_.exit.tearDown(); }
    void endUnasked() { shell_.exit.endUnasked(); }
    /// Handles an error that nothing else has handled; `place` names the routine or object.
    void meet(const RunTimeError &error, const QString &place) { net_.meet(error, place); }

private:
    /// Wraps a routine that Qt or the platform calls: no exception leaves it. After it sleep guard and icon
    /// follow the recording.
    std::function<void()> underNet(const char *place, std::function<void()> routine);
    void backToWork();
    Quillchart &chart(int index) { return view_.window.chart(index); }
    Run &run(int chart) { return *view_.window.charts()[chart]; }
    RunLog &log(int index);
    void bind();
    void mnuExport_Click();
    void TimerLoadMain_Timer();
    bool InitMainWindow();
    void FirstActivation();
    void openDropped(const QStringList &FileNames);
    void DrawChartLabel(const QString &FileName);

    Platform platform_;
    Values values_;
    Commands commands_;
    LastNet net_;

    WindowsOnScreen onScreen_;
    frmStartup splash_;
    std::unique_ptr<Timer> TimerLoadMain_;
    View view_;
    MainTimers timers_;
    StayAwake awake_;
    SystemNotices notices_;
    HelpKey helpKey_;
    Documents documents_;
    Acquisition acquisition_;

    MainZoomedTime zoomedTime_;
    PrintRun printRun_;
    ChartMenu chartMenu_;

    MainShellWindow shellWindow_;
    Shell shell_;
};

} // namespace ostrel
