// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"

#include <QStringList>

#include <chrono>
#include <functional>
#include <map>
#include <utility>

namespace ostrel {

/// Handles the run-time errors that no routine handles. Such an error ends only the routine that raised it: the
/// acquisition continues, the log is written, the operator is told.
///
/// The same error from the same place is shown once. While it repeats within a minute, and while a box with the same
/// text is open, from whatever place, it is only counted, with one entry of the error log a minute; after a minute
/// without it, it is shown again. A cancelled dialog (32755) is not an error and is ignored.
class LastNet {
public:
    struct Uses {
        Prompts &prompts;
        const Clock &clock;
        std::function<void()> backToWork;                  ///< called before the box, since samples keep coming
        std::function<void(const QString &message)> enter; ///< writes to the error log
    };

    explicit LastNet(Uses uses) : uses_(std::move(uses)) {}

    /// Runs a routine and handles its errors. `place` is the routine's name.
    template <typename Routine>
    void run(const QString &place, Routine &&routine) {
        try {
            std::forward<Routine>(routine)();
        } catch (...) {
            meet(caughtError(), place);
        }
    }
    void meet(const RunTimeError &error, const QString &place);

private:
    struct Seen {
        std::chrono::milliseconds last{0};
        std::chrono::milliseconds entered{0}; ///< time of its box or its last entry in the error log
        int count = 0;                        ///< since then
    };

    void count(Seen &seen, const RunTimeError &error, const QString &place);

    Uses uses_;
    std::map<std::pair<int, QString>, Seen> seen_;
    QStringList told_; ///< the texts of the boxes that are open
};

/// The message box for an unhandled error.
MessageBox errorBox(const RunTimeError &error);
/// The same for an error that prevents the start, with advice; `appPath` is the program's folder.
MessageBox startFailedBox(const RunTimeError &error, const QString &appPath);

} // namespace ostrel
