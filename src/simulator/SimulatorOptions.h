// SPDX-License-Identifier: MIT
#pragma once

#include "base/EarlyEnd.h"
#include "simulator/RunScript.h"

#include <QStringList>

namespace ostrel {

/// The options of the command line.
struct SimulatorOptions {
    QString script; ///< file of the run to play; empty for the demonstration
    QString replay; ///< captured stream to send instead of a run, or empty
    QString record;
    QString truth;
    QString link;
    std::optional<InstrumentKind> kind; ///< overrides the script's own
    double speed = 1;
    unsigned seed = 1;
    bool once = false;
};

/// `arguments` begin with the program's name. Throws EarlyEnd, whose `why` is the complete output: the help, or a
/// mistake on the command line.
SimulatorOptions readOptions(const QStringList &arguments);

} // namespace ostrel
