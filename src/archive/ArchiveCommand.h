// SPDX-License-Identifier: MIT
#pragma once

#include "archive/Lines.h"

#include <QCommandLineParser>
#include <QStringList>

/// How ostrel-file ends.
enum ExitCode : int {
    Good = 0,
    Failed = 1,  ///< a file is not whole, cannot be read, or cannot be written; nothing was left to save
    Misused = 2, ///< the command line is not understood
    Partial = 3  ///< something was saved, and something is missing
};

/// Ends a command before its work is done; `why` is told, with the program's name.
struct EarlyEnd {
    ExitCode exitCode;
    QString why;
};

/// One call of a command: what stood on the command line, and where the answers go.
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
    void (*declare)(QCommandLineParser &line); ///< its options; may be null
    ExitCode (*run)(const ArchiveCall &call);
};
