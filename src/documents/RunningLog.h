// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "documents/DocumentPorts.h"
#include "platform/CommonDialog.h"
#include "platform/Timer.h"

/// The running log: while logging is on, each tick of its timer brings the log chart up to date in this copy's log
/// directory. The operator can save it as a log file, and switch logging.
class RunningLog {
public:
    /// The values of the program that the log works with; the file dialog is that of the main window.
    struct Reads {
        const LinkState &link;
        const Identity &identity;
    };

    RunningLog(Reads reads, RunState &run, Options &options, LogState &log, ChartLog &Chart5, ChartLog &Chart6,
               Timer &TimerSaveLog, LogWindow &window, CommonDialog &ComDlg, ErrorRoute &errors);

    void TimerSaveLog_Timer();
    /// The same out of turn, while the log is at work: for what the operator has entered and counts on.
    void writeNow();
    /// LogSaved tells afterwards whether the log was saved. Its dialog leaves CancelError set.
    void mnuSaveLog_Click();
    void mnuLogOn_Click();
    void mnuLogOff_Click();

private:
    Reads reads_;
    RunState &run_;
    Options &options_;
    LogState &log_;
    ChartLog &Chart5_;
    ChartLog &Chart6_;
    Timer &TimerSaveLog_;
    LogWindow &window_;
    CommonDialog &ComDlg_;
    ErrorRoute &errors_;
};
