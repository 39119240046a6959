// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

namespace TextFile {

/// Adds UTF-8 text to the end of a plain file, which is made when it is missing and closed again at once. Never waits
/// for anybody. A failure is a RunTimeError: a full disk, or that a folder, pipe, device or link is there.
void append(const QString &path, const QString &text);

} // namespace TextFile

} // namespace ostrel
