// SPDX-License-Identifier: MIT
#pragma once

#include "base/Commands.h"
#include "base/Values.h"
#include "chart/files/RunLog.h"
#include "documents/DocumentPorts.h"
#include "documents/RunningLog.h"
#include "documents/Settings.h"
#include "platform/Process.h"
#include "platform/Prompts.h"
#include "shell/Instances.h"
#include "shell/ShellPorts.h"

#include <functional>

namespace ostrel {

/// The end of the program: the questions to the operator, and the teardown.
class ProgramExit {
public:
    /// Everything that the end uses from outside.
    struct Uses {
        RunLog &Chart5;
        RunningLog &log;
        const Commands &commands;
        LogWindow &logWindow;
        Settings &settings;
        Instances &instances;
        Prompts &prompts;
        Process &process;
        std::function<void()> leaveDesktop; ///< keeps the window's place, and takes back what holds no longer
    };

    ProgramExit(const Identity &identity, const TabStates &tabs, Uses uses);

    /// Asks about unsaved data and ends the process; false when the operator stays. While it asks, another call does
    /// nothing and returns false.
    bool frmMain_Unload();
    /// Only asks: true when the operator lets the program end.
    bool askToEnd();
    /// Only ends: removes everything of this copy and moves its log to the wastebasket. A left-over log that is still
    /// being offered is not touched.
    void tearDown();
    /// Ends without asking: writes all data of the recorder and the log to the log directory a last time. The directory
    /// stays, and the next start offers it for recovery.
    void endUnasked();
    /// Writes the log without ending.
    void writeLog();

private:
    bool ask();
    void takePlace();
    void closeLog();
    bool isWindowUp() const { return tabs_.ChartCount > 0; }

    const Identity &identity_;
    const TabStates &tabs_;
    Uses uses_;
    bool asking_ = false;
};

} // namespace ostrel
