// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// How a command on a terminal ends.
enum ExitCode : int {
    Good = 0,
    Failed = 1,  ///< a file or device cannot be read or written, or is not whole; nothing was left to save
    Misused = 2, ///< the command line is not understood
    Partial = 3  ///< something was saved, and something is missing
};

/// Ends a command before its work is done; `why` is the message.
struct EarlyEnd {
    ExitCode exitCode;
    QString why;
};

} // namespace ostrel
