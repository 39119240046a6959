// SPDX-License-Identifier: MIT
#pragma once

#include "base/EarlyEnd.h"
#include "simulator/RunScript.h"

#include <QStringList>

namespace ostrel {

/// What the command line asks for.
struct SimulatorOptions {
    QString script; ///< file of the run to play; empty for the demonstration
    QString replay; ///< captured stream to send in place of a run, or empty
    QString record;
    QString truth;
    QString link;
    std::optional<InstrumentKind> kind; ///< over the script's own
    double speed = 1;
    unsigned seed = 1;
    bool once = false;
};

/// `arguments` begin with the program's name. Throws EarlyEnd, whose `why` is the whole answer: help, or a mistake on
/// the command line.
SimulatorOptions readOptions(const QStringList &arguments);

} // namespace ostrel
