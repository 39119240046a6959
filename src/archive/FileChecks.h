// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// What is in a file, for a person, or with --json for a script.
void declareInfo(QCommandLineParser &line);
ExitCode info(const ArchiveCall &call);

/// A line for each file: whole, or what is wrong. Every file is read to its end.
ExitCode check(const ArchiveCall &call);

} // namespace ostrel
