// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "chart/files/RunLog.h"
#include "documents/DocumentPorts.h"
#include "platform/CommonDialog.h"
#include "platform/Timer.h"

#include <functional>

namespace ostrel {

/// The running log: while logging is on, each tick of its timer brings the log chart up to date in this copy's log
/// directory, and with it the recorder's chart when that holds unsaved data which the log chart has no part in. The
/// operator can save it as a log file, and switch logging.
class RunningLog {
public:
    /// The values of the program that the log works with.
    struct Reads {
        const LinkState &link;
        const TabStates &tabs;
        const Identity &identity;
        /// Where to write while LogDirectory is not this copy's yet; with a separator at its end.
        std::function<QString()> ownDirectory;
    };
    /// The hidden charts, and the recorder's.
    struct Charts {
        RunLog &Chart0;
        RunLog &Chart5;
        RunLog &Chart6;
    };

    /// The file dialog is that of the main window.
    RunningLog(Reads reads, RunState &run, Options &options, LogState &log, Charts charts, Timer &TimerSaveLog,
               LogWindow &window, CommonDialog &ComDlg, ErrorRoute &errors);

    /// On a full disk the error log cannot be written either: that error flies on. The next tick tries again.
    void TimerSaveLog_Timer();
    /// Brings all that came in to the disk, whether logging is on or not. 0 is good, as with WriteLog.
    qint16 write();
    /// The same while logging is on, with or without a link: for what the operator has entered and counts on.
    void writeNow();
    /// LogSaved tells afterwards whether the log was saved. Its dialog leaves CancelError set.
    void mnuSaveLog_Click();
    void mnuLogOn_Click();
    void mnuLogOff_Click();

private:
    bool writeTelling();
    bool hasDirectory() const { return !reads_.identity.InstanceTag.isEmpty(); }

    Reads reads_;
    RunState &run_;
    Options &options_;
    LogState &log_;
    Charts charts_;
    Timer &TimerSaveLog_;
    LogWindow &window_;
    CommonDialog &ComDlg_;
    ErrorRoute &errors_;
};

} // namespace ostrel
