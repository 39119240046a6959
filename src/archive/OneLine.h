// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// A text of a run for a file of another kind: in one line, without control characters and tabs, and with nothing that
/// has no place in UTF-8 or XML (half a surrogate pair, a non-character).
QString oneLine(const QString &text);

} // namespace ostrel
