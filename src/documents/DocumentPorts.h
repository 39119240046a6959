// SPDX-License-Identifier: MIT
#pragma once

/// What the documents need of the menus above them.

/// The click routines that the error route runs when the chart cannot take more.
class StopCommands {
public:
    virtual ~StopCommands() = default;
    virtual void mnuStop_Click() = 0;
    virtual void mnuLogOff_Click() = 0;
};
