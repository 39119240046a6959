// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// Reads files, and all chart files in folders, and says of each whether it is whole, or what its first fault is; with
/// --manifest also whether it is the file that it was when the manifest was written.
void declareCheck(QCommandLineParser &line);
ExitCode check(const ArchiveCall &call);

} // namespace ostrel
