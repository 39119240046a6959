// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// What is left of a damaged file, or of a running log's directory, into a new data file or log file; what is missing
/// is told.
ExitCode salvage(const ArchiveCall &call);

} // namespace ostrel
