// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Process.h"

namespace ostrel {

/// The running program as the QApplication knows it, which must exist.
class QtProcess : public Process {
public:
    /// From now on every end of the process lets go of the serial ports, a crash too.
    QtProcess();

    /// The serial ports are let go of and what was printed goes out; nothing is torn down and no destructor runs, since
    /// one that waits would keep the program alive. The operating system closes the files and drops their locks. Exit
    /// status 0.
    [[noreturn]] void end() override;
};

} // namespace ostrel
