// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"
#include "chart/files/RunningLogReader.h"

namespace ostrel {

/// The missing parts of a log, one a line; empty when the log is complete.
QStringList missingOf(const RecoveredLog &log);

/// The command that lists the running logs of a user, discarded ones too.
void declareLogs(QCommandLineParser &line);
ExitCode logs(const ArchiveCall &call);

} // namespace ostrel
