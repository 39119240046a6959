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

namespace ostrel {

/// The end of the program: what the operator is asked, and the teardown.
class ProgramExit {
public:
    /// What is left of this copy after the program, and what the end has to reach.
    struct Uses {
        RunLog &Chart5;
        RunningLog &log;
        const Commands &commands;
        LogWindow &logWindow;
        Settings &settings;
        Instances &instances;
        Prompts &prompts;
        Process &process;
    };

    ProgramExit(const Identity &identity, const TabStates &tabs, Uses uses);

    /// Asks what there is to ask, and ends the process; false when the operator stays. While it asks, another call does
    /// nothing and answers false.
    bool frmMain_Unload();
    /// The same without the end: true when the operator lets the program go.
    bool askToEnd();
    /// The end alone: nothing of this copy stays behind, its log goes to the wastebasket. What a crash left behind and
    /// is still being offered is not touched.
    void tearDown();
    /// The end without anybody to ask: all that is on the screen or in the log goes to the log directory once more,
    /// which stays for the next start to recover.
    void endUnasked();
    /// Writes the log a last time and goes on.
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
