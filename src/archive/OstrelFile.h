// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QTextStream>

namespace ostrel {

/// The archive tool of the recorder: shows, checks, converts and salvages chart files, without a display. `arguments`
/// begin with the program's name. Results go to `out`, error messages to `complaints`. Returns the exit code
/// (base/EarlyEnd.h); it is a failure when `out` cannot be written completely.
int ostrelFile(const QStringList &arguments, QTextStream &out, QTextStream &complaints);
/// The command paints, and so needs a QGuiApplication.
bool paints(const QString &command);

} // namespace ostrel
