// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Clock.h"
#include "platform/CommonDialog.h"
#include "platform/HelpViewer.h"
#include "platform/Notices.h"
#include "platform/PortDirectory.h"
#include "platform/Process.h"
#include "platform/Prompts.h"
#include "platform/SerialControl.h"
#include "platform/SettingsStore.h"
#include "platform/SleepGuard.h"
#include "platform/Timer.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QPrinter;

namespace ostrel {

/// The desktop that the program runs on. The program owns none of it.
struct Platform {
    const Clock &clock;
    SerialControl &ComPort; ///< the link
    SerialControl &CommTmp; ///< tries ports
    PortDirectory &directory;
    SettingsStore &store;
    Prompts &prompts;
    CommonDialog &ComDlg;                ///< the one file dialog of the main window, and its print setup
    CommonDialog &exportDialog;          ///< that of the export window
    std::function<QPrinter &()> printer; ///< the chosen printer, for the next report
    Process &process;
    SleepGuard &sleep;
    Notices &notices;
    HelpViewer &help;
    /// Makes a timer with a name, an interval in milliseconds, and its state at the start.
    std::function<std::unique_ptr<Timer>(QObject *owner, const QString &name, int interval, bool on)> makeTimer;
    QString appPath;      ///< without a separator at its end
    QString sharedFolder; ///< of the installed files, likewise
    QString errorLog;     ///< path of ChartErr.log
    QString commandLine;  ///< the arguments after the program's name
    bool PrevInstance = false;
};

} // namespace ostrel
