// SPDX-License-Identifier: MIT
#include "acquisition/PortSetup.h"

#include "base/HelpContexts.h"
#include "base/Steps.h"

namespace ostrel {

PortSetup::PortSetup(SerialControl &ComPort, SerialControl &CommTmp, Timer &TimerCheckComData, Options &options,
                     LinkState &link, PortDirectory &directory, Prompts &prompts)
    : ComPort_(ComPort), CommTmp_(CommTmp), TimerCheckComData_(TimerCheckComData), options_(options), link_(link),
      directory_(directory), prompts_(prompts) {}

void PortSetup::load() {
    choices_.enabled.fill(true);
    choices_.refusal.fill(0);
    FindFreeComPorts(false);
    SelectedComPort_ = options_.ComPortNumber;
}

void PortSetup::FindFreeComPorts(bool UseComPort) {
    for (int port = 1; port <= int(choices_.enabled.size()); ++port) {
        if (UseComPort)
            probe(ComPort_, port);
        else if (ComPort_.CommPort() != port) // the link's own port would seem busy
            probe(CommTmp_, port);
    }
}

void PortSetup::probe(SerialControl &control, int port) {
    const auto attempt = [&](auto &&step) {
        const int number = errorNumberOf(step);
        if (number == ErrorNumber::InvalidPortNumber || number == ErrorNumber::PortAlreadyOpen) {
            choices_.enabled[port - 1] = false;
            choices_.refusal[port - 1] = number;
        }
    };
    attempt([&] { control.setCommPort(static_cast<qint16>(port)); });
    attempt([&] { control.setPortOpen(true); });
    attempt([&] {
        if (control.PortOpen())
            control.setPortOpen(false);
    });
}

bool PortSetup::ok() {
    // The instrument on the new port has yet to show whether it sends status blocks.
    link_.StatusBlocksSeen = false;
    const Int16 oldPort = options_.ComPortNumber;
    const bool wasOpen = ComPort_.PortOpen();
    bool good = true;
    trapped(
        [&] {
            options_.ComPortNumber = SelectedComPort_;
            if (wasOpen)
                ComPort_.setPortOpen(false);
            ComPort_.setCommPort(static_cast<qint16>(SelectedComPort_));
            ComPort_.setPortOpen(true);
            TimerCheckComData_.setEnabled(true);
        },
        [&](const RunTimeError &error) {
            good = false;
            prompts_.show({QStringLiteral("Cannot open the selected communication port\r") + error.description(),
                           BoxIcon::Exclamation, QStringLiteral("DATA COLLECTION SETUP ERROR"), BoxButtons::Ok, 1,
                           HelpContext::ComPort});
            options_.ComPortNumber = oldPort;
            skippingErrors([&] { ComPort_.setCommPort(static_cast<qint16>(oldPort)); },
                           [&] { ComPort_.setPortOpen(wasOpen); });
        });
    return good;
}

} // namespace ostrel
