// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "platform/PortDirectory.h"
#include "platform/Prompts.h"
#include "platform/SerialControl.h"
#include "platform/Timer.h"

#include <array>

namespace ostrel {

/// Which of the ports COM 1 to COM 10 can be chosen; the index is the port's number less 1.
struct PortChoices {
    std::array<bool, 10> enabled{};
    std::array<int, 10> refusal{}; ///< the error number for which a port is not enabled

    /// False also for a number that no button has.
    bool has(int port) const { return port >= 1 && port <= int(enabled.size()) && enabled[port - 1]; }
};

/// The rules of the form frmSetup: it probes the ports, keeps the picked one and changes the link to it.
class PortSetup {
public:
    /// `ComPort` is the link itself; `CommTmp` only tries ports, so that the link stays untouched.
    PortSetup(SerialControl &ComPort, SerialControl &CommTmp, Timer &TimerCheckComData, Options &options,
              LinkState &link, PortDirectory &directory, Prompts &prompts);

    /// Call this before each showing of the form: probes all ports and picks the present one.
    void load();
    /// Disables each choice whose port is missing or held by another program. With `UseComPort` the link's own control
    /// tries all ports and is left at the last one.
    void FindFreeComPorts(bool UseComPort);

    const PortChoices &choices() const { return choices_; }
    /// What is behind the button of a port, 1 to 10.
    PortFacts factsOf(int port) const { return directory_.factsOf(port, choices_.refusal[port - 1]); }
    /// The link itself is open on this port.
    bool isLink(int port) const { return ComPort_.PortOpen() && ComPort_.CommPort() == port; }
    /// The port that is shown as picked; none is for a stored number outside 1 to 10.
    int SelectedComPort() const { return SelectedComPort_; }
    void optCom_Click(int Index) { SelectedComPort_ = Index + 1; }

    /// Changes the link to the picked port. True: hide the form. False: the operator was told that the port does not
    /// open, the old one is back, and the form stays.
    bool ok();

private:
    void probe(SerialControl &control, int port);

    SerialControl &ComPort_;
    SerialControl &CommTmp_;
    Timer &TimerCheckComData_;
    Options &options_;
    LinkState &link_;
    PortDirectory &directory_;
    Prompts &prompts_;
    PortChoices choices_;
    Int16 SelectedComPort_;
};

} // namespace ostrel
