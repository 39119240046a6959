// SPDX-License-Identifier: MIT
#pragma once

namespace ostrel {

/// The running program itself.
class Process {
public:
    virtual ~Process() = default;

    /// Ends the process at once, with all its windows and the serial port.
    virtual void end() = 0;
};

} // namespace ostrel
