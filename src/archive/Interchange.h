// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// Writes a run for other programs for chromatograms: docs/interchange.md.
ExitCode andi(const ArchiveCall &call);

} // namespace ostrel
