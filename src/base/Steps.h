// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"

#include <exception>
#include <utility>

/// Runs `body`; a run-time error ends it. Answers the error's number, 0 when there was none.
template <typename Body>
int errorNumberOf(Body &&body) {
    try {
        std::forward<Body>(body)();
        return 0;
    } catch (const RunTimeError &error) {
        return error.number();
    }
}

/// Runs `body`. Answers what flew out of it, of any type, to be thrown again where that does no harm; null for nothing.
template <typename Body>
std::exception_ptr errorOf(Body &&body) {
    try {
        std::forward<Body>(body)();
        return nullptr;
    } catch (...) {
        return std::current_exception();
    }
}

/// Runs each step, one lambda a statement, and skips what is left of a step that fails. Answers the number of the last
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

/// One handler over a whole routine: the first run-time error ends `body` and is handed to `handler`.
template <typename Body, typename Handler>
void trapped(Body &&body, Handler &&handler) {
    try {
        std::forward<Body>(body)();
    } catch (const RunTimeError &error) {
        std::forward<Handler>(handler)(error);
    }
}
