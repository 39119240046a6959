// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"

#include <exception>
#include <utility>

namespace ostrel {

/// Any std::exception that leaves a routine counts as a run-time error: see caughtError().

/// Runs `body`; a run-time error ends it. Returns the error's number, 0 when there was none.
template <typename Body>
int errorNumberOf(Body &&body) {
    try {
        std::forward<Body>(body)();
        return 0;
    } catch (...) {
        return caughtError().number();
    }
}

/// Runs each step, one lambda a statement, and skips what is left of a step that fails. Returns the number of the last
/// error, 0 when there was none.
template <typename... Steps>
int skippingErrors(Steps &&...steps) {
    int last = 0;
    const auto run = [&last](auto &&step) {
        if (const int number = errorNumberOf(step); number != 0)
            last = number;
    };
    (run(std::forward<Steps>(steps)), ...);
    return last;
}

/// Runs steps one after the other, each one even when an earlier one has failed. raise() then rethrows the first
/// exception, of any type, if there was one.
class EveryStep {
public:
    template <typename Step>
    void run(Step &&step) {
        try {
            std::forward<Step>(step)();
        } catch (...) {
            if (!first_)
                first_ = std::current_exception();
        }
    }
    void raise() const {
        if (first_)
            std::rethrow_exception(first_);
    }

private:
    std::exception_ptr first_;
};

/// One handler over a whole routine: the first run-time error ends `body` and is handed to `handler`.
template <typename Body, typename Handler>
void trapped(Body &&body, Handler &&handler) {
    try {
        std::forward<Body>(body)();
    } catch (...) {
        std::forward<Handler>(handler)(caughtError());
    }
}

} // namespace ostrel
