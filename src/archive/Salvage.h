// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// Saves the readable data of a damaged file, or of a running log's directory, to a new data file or log file, and
/// reports the missing parts.
ExitCode salvage(const ArchiveCall &call);

} // namespace ostrel
