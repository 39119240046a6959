// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// Shows the contents of a file, for a person, or with --json for a script.
void declareInfo(QCommandLineParser &line);
ExitCode info(const ArchiveCall &call);

} // namespace ostrel
