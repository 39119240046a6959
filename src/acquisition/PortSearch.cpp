// SPDX-License-Identifier: MIT
#include "acquisition/PortSearch.h"

#include "base/HelpContexts.h"
#include "base/Steps.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace ostrel {

namespace {

constexpr int inputBufferBytes = 32000;

} // namespace

PortSearch::PortSearch(PortSetup &setup, SerialControl &ComPort, Timer &TimerCheckComData, Options &options,
                       const Identity &identity, SetupDialog &dialog, Prompts &prompts, const Commands &commands,
                       ErrorRoute &errors)
    : setup_(setup), ComPort_(ComPort), TimerCheckComData_(TimerCheckComData), options_(options), identity_(identity),
      dialog_(dialog), prompts_(prompts), commands_(commands), errors_(errors) {}

bool PortSearch::chooseAtStart() {
    setup_.load();
    setup_.FindFreeComPorts(true);
    if (setup_.choices().has(options_.ComPortNumber) && !identity_.PrevInstance) {
        ComPort_.setCommPort(static_cast<qint16>(options_.ComPortNumber));
    } else if (!askForPort()) {
        prompts_.show({.text = QStringLiteral("All available COM ports are already in use.  "
                                              "Please free one COM port before restarting Ostrel MS."),
                       .HelpContextID = HelpContext::ComPort});
        commands_.run(QStringLiteral("mnuExit"));
        return false;
    }
    ComPort_.setInBufferSize(inputBufferBytes);
    return true;
}

bool PortSearch::askForPort() {
    const auto &enabled = setup_.choices().enabled;
    const auto firstFree = std::find(enabled.begin(), enabled.end(), true);
    if (firstFree == enabled.end())
        return false;
    options_.ComPortNumber = int(firstFree - enabled.begin()) + 1;
    // The form still shows the stored port as picked, since load() ran before the search.
    dialog_.show(setup_, false);
    // ok() has opened the picked port. The link is opened and watched only once the main window is there.
    TimerCheckComData_.setEnabled(false);
    if (ComPort_.PortOpen())
        ComPort_.setPortOpen(false);
    return true;
}

void PortSearch::openAtStart() {
    const int number = errorNumberOf([&] { ComPort_.setPortOpen(true); });
    if (number == 0)
        return;
    EveryStep steps; // the operator can choose another port even when the error log cannot be written
    steps.run([&] { errors_.HandelError(number); });
    if (number == ErrorNumber::InvalidPortNumber)
        steps.run([this] { mnuComPort_Click(); });
    steps.raise();
}

void PortSearch::mnuComPort_Click() {
    // The lost-link dialog can open over the form and lead here again.
    if (setupShown_)
        return;
    const QScopedValueRollback<bool> shown(setupShown_, true);
    setup_.load();
    dialog_.show(setup_, true);
}

} // namespace ostrel
