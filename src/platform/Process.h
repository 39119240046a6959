// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The running program itself.
class Process {
public:
    virtual ~Process() = default;

    /// What stood behind the program's name on the command line, as one string.
    virtual QString commandLine() const = 0;
    /// Ends the process at once, with all windows and the serial port going down with it.
    virtual void end() = 0;
};
