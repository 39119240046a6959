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

    /// Handles every event of the port. One that is not a receive event goes to the error route.
    void ComPort_OnComm();
    /// Moves the waiting bytes into the ring and restarts the decoder's countdown, so that a burst is decoded in one
    /// pass. The countdown is not restarted when the last pass began over 300 ms ago or the ring is more than half
    /// full. Raises overflow (6) when the ring's count leaves 16 bits.
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
