// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// What is known about a serial port.
struct PortFacts {
    enum class Obstacle {
        None,
        Missing,      ///< there is no such device
        NoTerminal,   ///< something else than a serial port
        NoPermission, ///< `by` is the group that may open it
        Held,         ///< `by` is the program that has it open
    };

    QString device;    ///< its path; empty when the computer has no such port
    QString product{}; ///< what a USB adapter calls itself
    Obstacle obstacle = Obstacle::None;
    QString by{}; ///< empty where it cannot be found out
};

/// Tells the operator's serial ports apart.
class PortDirectory {
public:
    virtual ~PortDirectory() = default;

    /// What is behind COM `number`, found out without opening a device. `refusal` is the error number of the last
    /// attempt to open it, 0 for none: only with one is it looked for who holds the port. Never fails.
    virtual PortFacts factsOf(int number, int refusal) = 0;
};

} // namespace ostrel
