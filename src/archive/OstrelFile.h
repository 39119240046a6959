// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QTextStream>

namespace ostrel {

/// The companion of the recorder for a lab's archive: looks into chart files, checks, converts and salvages them,
/// without a display. `arguments` begin with the program's name. What was asked for goes to `out`, anything amiss to
/// `complaints`; the answer is the exit code (ArchiveCommand.h). An `out` that does not take it all is a failure.
int ostrelFile(const QStringList &arguments, QTextStream &out, QTextStream &complaints);

} // namespace ostrel
