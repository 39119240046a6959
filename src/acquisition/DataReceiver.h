// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/ReceiveRing.h"
#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "platform/SerialControl.h"
#include "platform/Timer.h"

/// Moves what the serial port received into the ring.
class DataReceiver {
public:
    DataReceiver(SerialControl &ComPort, ReceiveRing &ring, LinkState &link, Timer &TimerProcess, ErrorRoute &errors);

    /// Every event of the port comes here. One that is not a receive event goes to the error route.
    void ComPort_OnComm();
    /// Starts the decoder's countdown anew when bytes were moved. Overflow (6) when the ring's count leaves 16 bits.
    void ReceiveComData();

private:
    SerialControl &ComPort_;
    ReceiveRing &ring_;
    LinkState &link_;
    Timer &TimerProcess_;
    ErrorRoute &errors_;
};
