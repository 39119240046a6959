// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"
#include "chart/files/RunningLogReader.h"

namespace ostrel {

/// What the log no longer holds, a line each; none when it is whole.
QStringList missingOf(const RecoveredLog &log);

/// The command that lists the running logs of a user, those that were thrown away too.
void declareLogs(QCommandLineParser &line);
ExitCode logs(const ArchiveCall &call);

} // namespace ostrel
