// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"

#include <QString>

#include <chrono>
#include <functional>
#include <map>
#include <utility>

namespace ostrel {

/// Meets the run-time errors that no routine handles. Such an error ends the routine that it flew out of and nothing
/// else: the acquisition goes back to work, the log is written, the operator is told.
///
/// The same error from the same place is told once. While its box is up, and while it keeps coming, never a minute
/// apart, it is an entry of the error log a minute, with its count; after a quiet minute it is told anew. A cancelled
/// dialog (32755) is the operator's own wish and nobody's error.
class LastNet {
public:
    struct Uses {
        Prompts &prompts;
        const Clock &clock;
        std::function<void()> backToWork;                  ///< before the operator is told: samples go on coming
        std::function<void(const QString &message)> enter; ///< into the error log
    };

    explicit LastNet(Uses uses) : uses_(std::move(uses)) {}

    /// Runs a routine; what flies out of it is met. `place` is the routine's name.
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
        std::chrono::milliseconds entered{0}; ///< when it was told, or last came into the error log
        int count = 0;                        ///< since then
        bool told = false;                    ///< its box is still up
    };

    void count(Seen &seen, const RunTimeError &error, const QString &place);

    Uses uses_;
    std::map<std::pair<int, QString>, Seen> seen_;
};

/// How an error is told that nobody has handled.
MessageBox errorBox(const RunTimeError &error);
/// The same of one that keeps the program from starting, with what to do about it; `appPath` is the program's folder.
MessageBox startFailedBox(const RunTimeError &error, const QString &appPath);

} // namespace ostrel
