// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "chart/files/RunLog.h"
#include "documents/DocumentPorts.h"
#include "platform/CommonDialog.h"
#include "platform/Notices.h"
#include "platform/Timer.h"

#include <functional>

namespace ostrel {

/// The running log: while logging is on, each tick of its timer writes the new data of the log chart to this copy's log
/// directory. If the recorder's chart holds unsaved data that is not in the log, its data is written too. The operator
/// can save the log as a log file, and switch logging on and off.
class RunningLog {
public:
    /// The values of the program that the log reads.
    struct Reads {
        const LinkState &link;
        const TabStates &tabs;
        const Identity &identity;
        /// The directory to write to while LogDirectory is not this copy's own yet; with a separator at its end.
        std::function<QString()> ownDirectory;
    };
    /// The recorder's chart and the two hidden ones.
    struct Charts {
        RunLog &Chart0;
        RunLog &Chart5;
        RunLog &Chart6;
    };

    /// `ComDlg` is the main window's file dialog.
    RunningLog(Reads reads, RunState &run, Options &options, LogState &log, Charts charts, Timer &TimerSaveLog,
               LogWindow &window, CommonDialog &ComDlg, ErrorRoute &errors, Notices &notices);

    /// On a full disk the error log cannot be written either; that error is passed on. The next tick tries again.
    void TimerSaveLog_Timer();
    /// Writes all new data to the disk, whether logging is on or not. 0 means success, as with WriteLog.
    qint16 write();
    /// The same, but only while logging is on, with or without a link: for data that the operator has just entered.
    void writeNow();
    /// LogSaved is false after a failure or a Cancel, but true when there is no log. CancelError stays set.
    void mnuSaveLog_Click();
    void mnuLogOn_Click();
    void mnuLogOff_Click();

private:
    void writeAll();
    bool writeTelling();
    void tell(qint16 status);
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
    Notices &notices_;
};

} // namespace ostrel
