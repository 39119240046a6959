// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

namespace TextFile {

/// Appends UTF-8 text to a plain file, which is made when it is missing and closed again at once. Never waits for a
/// pipe or a lock. A failure, such as a full disk or a path that is no plain file, is a RunTimeError.
void append(const QString &path, const QString &text);

} // namespace TextFile

} // namespace ostrel
