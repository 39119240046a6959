// SPDX-License-Identifier: MIT
#pragma once

namespace ostrel {

/// The running program itself.
class Process {
public:
    virtual ~Process() = default;

    /// Ends the process at once, with all windows and the serial port going down with it.
    virtual void end() = 0;
};

} // namespace ostrel
