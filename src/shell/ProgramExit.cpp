// SPDX-License-Identifier: MIT
#include "shell/ProgramExit.h"

#include "base/HelpContexts.h"
#include "base/Steps.h"
#include "files/Directories.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace ostrel {

namespace {

constexpr int firstInstance = 1;

} // namespace

ProgramExit::ProgramExit(const Identity &identity, const TabStates &tabs, Uses uses)
    : identity_(identity), tabs_(tabs), uses_(std::move(uses)) {}

bool ProgramExit::frmMain_Unload() {
    if (!askToEnd())
        return false;
    tearDown();
    return true;
}

bool ProgramExit::askToEnd() {
    if (asking_)
        return false;
    const QScopedValueRollback asking(asking_, true);
    return ask();
}

bool ProgramExit::ask() {
    if (uses_.logWindow.saveLogEnabled() &&
        uses_.prompts.show({QStringLiteral("Do you want to save the LOG file before exiting "),
                            BoxIcon::Question,
                            {},
                            BoxButtons::YesNo,
                            1,
                            HelpContext::Exit}) == BoxAnswer::Yes)
        uses_.commands.run(QStringLiteral("mnuSaveLog"));

    const auto end = tabs_.ChartSaved.begin() + std::max<int>(tabs_.ChartCount, 0);
    if (std::all_of(tabs_.ChartSaved.begin(), end, [](bool saved) { return saved; }))
        return true;
    return uses_.prompts.show({QStringLiteral("Chart Recorder Data or opened Data is not saved.\rExit without save?"),
                               BoxIcon::Question, QStringLiteral("Data is not saved"), BoxButtons::YesNo, 2,
                               HelpContext::Exit}) != BoxAnswer::No;
}

void ProgramExit::tearDown() {
    skippingErrors(
        [&] {
            if (identity_.InstanceNumber == firstInstance)
                uses_.settings.SaveSettings();
        },
        [&] { uses_.leaveDesktop(); }, [&] { takePlace(); },
        [&] { writeLog(); }, // so that the wastebasket gets all data
        [&] { closeLog(); },
        [&] {
            // Also for a copy that found no port and ends before its window was set up.
            if (!isWindowUp() || identity_.InstanceNumber >= firstInstance)
                uses_.instances.RemoveRegistryEntry();
        });
    uses_.process.end();
}

void ProgramExit::closeLog() {
    if (identity_.InstanceTag.isEmpty())
        return; // LogDirectory is empty, or names a left-over log
    uses_.Chart5.CloseLog(identity_.LogDirectory, identity_.InstanceNumber);
    Directories::remove(identity_.LogDirectory.chopped(1));
}

void ProgramExit::endUnasked() {
    skippingErrors([&] { takePlace(); });
    writeLog();
    skippingErrors([&] { uses_.leaveDesktop(); });
    uses_.process.end();
}

/// While left-over logs are still being offered, this copy has no log directory of its own yet: registers it now.
void ProgramExit::takePlace() {
    if (isWindowUp() && identity_.InstanceTag.isEmpty())
        uses_.instances.registerUnasked();
}

void ProgramExit::writeLog() {
    if (isWindowUp())
        skippingErrors([&] { uses_.log.write(); });
}

} // namespace ostrel
