// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Process.h"

/// The running program as the QApplication knows it, which must exist.
class QtProcess : public Process {
public:
    /// The arguments that Qt left, one blank apart.
    /// What was printed goes out; nothing is torn down and no destructor runs, since one that waits would keep the
    /// program alive. The operating system closes the files and the serial port and drops their locks. Exit status 0.
    [[noreturn]] void end() override;
};
