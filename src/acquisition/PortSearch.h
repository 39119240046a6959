// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "acquisition/PortSetup.h"
#include "base/Commands.h"
#include "base/ErrorRoute.h"

namespace ostrel {

/// Settles on a serial port: at the start by itself or with the operator's help, later whenever the operator asks.
class PortSearch {
public:
    /// `setup` must work on the same `ComPort`, timer and options.
    PortSearch(PortSetup &setup, SerialControl &ComPort, Timer &TimerCheckComData, Options &options,
               const Identity &identity, SetupDialog &dialog, Prompts &prompts, const Commands &commands,
               ErrorRoute &errors);

    /// Prepares the link's control for a free port, the stored one for the first copy of the program. False when no
    /// port is free: the operator was told and the program is on its way out.
    bool chooseAtStart();
    /// Opens the link, the last act of the start. A failure is told and leaves the program running without a link.
    void openAtStart();

    /// While the form is up already, the operator is left with that one.
    void mnuComPort_Click();

private:
    bool askForPort();

    PortSetup &setup_;
    SerialControl &ComPort_;
    Timer &TimerCheckComData_;
    Options &options_;
    const Identity &identity_;
    SetupDialog &dialog_;
    Prompts &prompts_;
    const Commands &commands_;
    ErrorRoute &errors_;
    bool setupShown_ = false;
};

} // namespace ostrel
