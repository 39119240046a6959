// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace TextFile {

/// Adds UTF-8 text to the end of a file, which is made when it is missing and closed again at once. A failure, a full
/// disk too, is a RunTimeError.
void append(const QString &path, const QString &text);

} // namespace TextFile
