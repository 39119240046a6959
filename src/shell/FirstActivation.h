// SPDX-License-Identifier: MIT
#pragma once

#include "base/Commands.h"
#include "base/Values.h"
#include "platform/Timer.h"
#include "shell/Instances.h"
#include "shell/Recovery.h"
#include "shell/ShellPorts.h"
#include "shell/SystemNaming.h"

#include <functional>

/// What happens once, when the main window has come up: what a crash left behind is offered, this copy gets its log
/// directory, its number and its name, and the watch over the link begins.
class FirstActivation {
public:
    /// `DrawChartLabel` opens a file; its errors are its own affair.
    FirstActivation(const Identity &identity, const Options &options, Recovery &recovery, Instances &instances,
                    Timer &TimerCheckComData, ShellWindow &window, const Commands &commands,
                    std::function<void(const QString &FileName)> DrawChartLabel);

    /// `commandLine` is all that stood behind the program's name: a file to open, or nothing. A log directory that
    /// cannot be made is a run-time error that nobody meets.
    void run(const QString &commandLine);

private:
    const Identity &identity_;
    const Options &options_;
    Recovery &recovery_;
    Instances &instances_;
    Timer &TimerCheckComData_;
    ShellWindow &window_;
    const Commands &commands_;
    std::function<void(const QString &FileName)> DrawChartLabel_;
};
