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
/// order of construction.
struct Shell {
    /// Everything that the units use from outside.
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
        Run &logNotes; ///< the log chart, which gets the recorder's notes
        LogWindow &logWindow;
        ShellWindow &window;
        QWidget &owner; ///< the parent of its windows
        std::function<void()> leaveDesktop;
    };

    explicit Shell(const Uses &uses);
    Shell(const Shell &) = delete; // the units hold references to each other
    Shell &operator=(const Shell &) = delete;

    /// Binds the click routines.
    void bind(Commands &commands);

    std::vector<SettingRow> logInfo; ///< LogInfoTable: the section of the store as it was at the start
    Instances instances;
    Recovery recovery;
    SystemNaming naming;
    TextWindows textWindows;
    ProgramExit exit;
};

} // namespace ostrel
