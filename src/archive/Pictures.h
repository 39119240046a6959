// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

namespace ostrel {

/// Paints the chart as PNG or SVG.
void declarePicture(QCommandLineParser &line);
ExitCode picture(const ArchiveCall &call);

} // namespace ostrel
