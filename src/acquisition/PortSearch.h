// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "acquisition/PortSetup.h"
#include "base/Commands.h"
#include "base/ErrorRoute.h"

namespace ostrel {

/// Chooses the serial port: at the start alone or with the operator's help, later when the operator asks.
class PortSearch {
public:
    /// `setup` must work on the same `ComPort`, timer and options.
    PortSearch(PortSetup &setup, SerialControl &ComPort, Timer &TimerCheckComData, Options &options,
               const Identity &identity, SetupDialog &dialog, Prompts &prompts, const Commands &commands,
               ErrorRoute &errors);

    /// Sets the link's control to a free port: the stored one, if it is free and this is the first copy of the program.
    /// False when no port is free: the operator was told, and the program is about to exit.
    bool chooseAtStart();
    /// Opens the link as the last step of the start. A failure is reported; the program then runs without a link.
    void openAtStart();

    /// Shows the form for the port. Does nothing while it is already open.
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
