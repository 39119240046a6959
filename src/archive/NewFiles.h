// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"

#include <functional>

namespace ostrel {

/// The files that a command makes of each run.
struct NewFiles {
    const char *ending; ///< of the first one in a folder: run.chd becomes run.txt
    /// All files that are made under a name; null for the one of that name.
    QStringList (*all)(const QString &path) = nullptr;
};

/// Takes all operands but the last as runs and the last as the new file, or as the folder for the new files, and calls
/// `convert` for each run once it may write. Of several runs each failure is told, the others are made all the same,
/// and the result is a failure. A second file of one name is refused.
ExitCode convertEach(const ArchiveCall &call, const NewFiles &made,
                     const std::function<void(const QString &from, const QString &to)> &convert);

/// The last operand is a folder.
bool intoFolder(const ArchiveCall &call);

} // namespace ostrel
