// SPDX-License-Identifier: MIT
#pragma once

#include "base/Guard.h"
#include "documents/ClearAndClose.h"
#include "documents/ErrorReporter.h"
#include "documents/OpenFiles.h"
#include "documents/RunningLog.h"
#include "documents/SaveFiles.h"
#include "documents/Settings.h"

namespace ostrel {

/// Error route, options, files and the running log: one of each unit of the documents, in the order of construction.
struct Documents {
    /// Everything that the units use from outside.
    struct Uses {
        Values &values;
        SettingsStore &store;
        const SerialControl &ComPort;
        CommonDialog &ComDlg;
        Prompts &prompts;
        const Clock &clock;
        Timer &TimerSaveLog;
        const Commands &commands;
        const DocumentCharts &charts;
        RunningLog::Charts logs;
        DocumentWindow &window;
        LogWindow &logWindow;
        Notices &notices;
        std::function<QString()> ownLogDirectory; ///< see RunningLog::Reads
        QString errorLog;                         ///< the file, with its folder
    };

    explicit Documents(const Uses &uses);
    Documents(const Documents &) = delete; // the units hold references to each other
    Documents &operator=(const Documents &) = delete;

    /// Binds the click routines and the timer's routine.
    void bind(Commands &commands, const Guard &guard);

    ErrorReporter errors;
    Settings settings;
    OpenFiles openFiles;
    SaveFiles saveFiles;
    ClearAndClose clearAndClose;
    RunningLog log;

private:
    Timer &TimerSaveLog_;
};

} // namespace ostrel
