// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/ReceiveRing.h"
#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "platform/Clock.h"
#include "platform/SerialControl.h"
#include "platform/Timer.h"

namespace ostrel {

/// Moves what the serial port received into the ring.
class DataReceiver {
public:
    DataReceiver(SerialControl &ComPort, ReceiveRing &ring, LinkState &link, Timer &TimerProcess, const Clock &clock,
                 ErrorRoute &errors);

    /// Every event of the port comes here. One that is not a receive event goes to the error route.
    void ComPort_OnComm();
    /// Starts the decoder's countdown anew when bytes were moved, so that what comes in one burst is decoded at one go;
    /// but a pass comes a second after the one before at the latest, and a ring that is half full waits for nothing.
    /// Overflow (6) when the ring's count leaves 16 bits.
    void ReceiveComData();

private:
    bool mayPutOffPass() const;

    SerialControl &ComPort_;
    ReceiveRing &ring_;
    LinkState &link_;
    Timer &TimerProcess_;
    const Clock &clock_;
    ErrorRoute &errors_;
};

} // namespace ostrel
