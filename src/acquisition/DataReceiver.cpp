// SPDX-License-Identifier: MIT
#include "acquisition/DataReceiver.h"

#include <QScopeGuard>

namespace ostrel {

using namespace std::chrono_literals;

namespace {

// With the countdown of 700 ms a pass begins at most a second after the one before, and bytes that the port reports, 50
// at a time, are decoded within 1.5 s at any rate of the line.
constexpr auto mostPutOff = 300ms;
constexpr int halfFull = ReceiveRing::size / 2;

} // namespace

DataReceiver::DataReceiver(SerialControl &ComPort, ReceiveRing &ring, LinkState &link, Timer &TimerProcess,
                           const Clock &clock, ErrorRoute &errors)
    : ComPort_(ComPort), ring_(ring), link_(link), TimerProcess_(TimerProcess), clock_(clock), errors_(errors) {}

void DataReceiver::ComPort_OnComm() {
    // Any event shows that the link is alive, also a fault.
    link_.ComDataSeen = true;
    if (const int event = ComPort_.CommEvent(); event != ErrorNumber::ReceiveEvent)
        errors_.HandelError(event);
    else if (!link_.DataBusy)
        ReceiveComData();
}

void DataReceiver::ReceiveComData() {
    if (ComPort_.InBufferCount() == 0)
        return;
    if (mayPutOffPass())
        TimerProcess_.setEnabled(false);
    link_.DataBusy = true;
    const auto done = qScopeGuard([this] {
        TimerProcess_.setEnabled(true);
        link_.DataBusy = false;
    });
    const QByteArray received = ComPort_.Input();
    ring_.put({reinterpret_cast<const std::uint8_t *>(received.data()), std::size_t(received.size())});
}

bool DataReceiver::mayPutOffPass() const {
    return clock_.uptime() - link_.LastPass <= mostPutOff && ring_.ByteCount() <= halfFull;
}

} // namespace ostrel
