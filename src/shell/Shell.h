// SPDX-License-Identifier: MIT
#pragma once

#include "documents/Documents.h"
#include "platform/Process.h"
#include "shell/Instances.h"
#include "shell/ProgramExit.h"
#include "shell/Recovery.h"
#include "shell/SystemNaming.h"
#include "shell/TextWindows.h"

namespace ostrel {

/// Start-up, copies, crash recovery, exit, and the windows of method and notes: one of each unit of the shell, in the
/// order of their making.
struct Shell {
    /// What it is made from, and what it reaches.
    struct Uses {
        Values &values;
        const Commands &commands;
        SettingsStore &store;
        Prompts &prompts;
        Process &process;
        const Clock &clock;
        QString appPath; ///< without a separator at its end
        Documents &documents;
        const DocumentCharts &charts;
        RunLog &Chart5;
        Run &logNotes; ///< of the log chart: takes the recorder's notes
        LogWindow &logWindow;
        ShellWindow &window;
        QWidget &owner; ///< what its windows are over
    };

    explicit Shell(const Uses &uses);
    Shell(const Shell &) = delete; // the units know each other
    Shell &operator=(const Shell &) = delete;

    /// Its click routines.
    void bind(Commands &commands);

    std::vector<SettingRow> logInfo; ///< LogInfoTable: what other copies and crashes had left in the store
    Instances instances;
    Recovery recovery;
    SystemNaming naming;
    TextWindows textWindows;
    ProgramExit exit;
};

} // namespace ostrel
