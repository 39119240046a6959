// SPDX-License-Identifier: MIT
#include "acquisition/DataReceiver.h"

DataReceiver::DataReceiver(SerialControl &ComPort, ReceiveRing &ring, LinkState &link, Timer &TimerProcess,
                           ErrorRoute &errors)
    : ComPort_(ComPort), ring_(ring), link_(link), TimerProcess_(TimerProcess), errors_(errors) {}

void DataReceiver::ComPort_OnComm() {
    // Any event is life on the line, a fault too.
    link_.ComDataSeen = true;
    if (const int event = ComPort_.CommEvent(); event != SerialControl::Receive)
        errors_.HandelError(event);
    else if (!link_.DataBusy)
        ReceiveComData();
}

void DataReceiver::ReceiveComData() {
    if (ComPort_.InBufferCount() == 0)
        return;
    TimerProcess_.setEnabled(false);
    link_.DataBusy = true;
    const QByteArray received = ComPort_.Input();
    ring_.put({reinterpret_cast<const std::uint8_t *>(received.data()), std::size_t(received.size())});
    TimerProcess_.setEnabled(true);
    link_.DataBusy = false;
}
