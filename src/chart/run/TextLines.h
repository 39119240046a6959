// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"

#include <QStringList>

namespace ostrel {

/// The lines of a text, whichever line ends it has, without the empty ones at its end. Control characters other than
/// the tab become blanks.
QStringList linesOf(const QString &text);

/// A text of a run in one line, as a picture, a report or a file of another kind can hold it: without control
/// characters and tabs, and with nothing that has no place in UTF-8 or XML (half a surrogate pair, a non-character).
QString oneLine(const QString &text);

/// The lines of all method texts in the order of their times, an empty line between one text and the next.
QStringList methodLines(const std::vector<MethodText> &texts);

} // namespace ostrel
