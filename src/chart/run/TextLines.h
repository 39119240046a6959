// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"

#include <QStringList>

namespace ostrel {

/// The lines of a text, whichever line ends it has, without the empty ones at its end. Control characters other than
/// the tab become blanks.
QStringList linesOf(const QString &text);

/// The lines of all method texts in the order of their times, an empty line between one text and the next.
QStringList methodLines(const std::vector<MethodText> &texts);

} // namespace ostrel
