// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Process.h"

namespace ostrel {

/// The running program.
class QtProcess : public Process {
public:
    /// From now on every end of the process releases the serial ports, a crash too.
    QtProcess();

    /// Releases the serial ports and flushes the output streams. No destructor runs, since one that waits would keep
    /// the program alive. The operating system closes the files and drops their locks. Exit status 0.
    [[noreturn]] void end() override;
};

} // namespace ostrel
