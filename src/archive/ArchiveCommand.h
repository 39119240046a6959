// SPDX-License-Identifier: MIT
#pragma once

#include "archive/Lines.h"
#include "base/EarlyEnd.h"

#include <QCommandLineParser>
#include <QStringList>

namespace ostrel {

/// One call of a command: its command line and its output streams.
struct ArchiveCall {
    const QCommandLineParser &line;
    QStringList operands;
    Lines &out;
    Lines &complaints;

    QString operand(int number) const { return operands.value(number); }
};

struct ArchiveCommand {
    const char *name;
    const char *operands; ///< as the help shows them
    const char *summary;
    int least; ///< operands
    int most;
    void (*declare)(QCommandLineParser &line); ///< adds its options; may be null
    ExitCode (*run)(const ArchiveCall &call);
};

} // namespace ostrel
