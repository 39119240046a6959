// SPDX-License-Identifier: MIT
#pragma once

#include <new>

namespace ostrel {

/// Runs `operation`; running out of memory counts as its failure.
template <typename Operation>
bool succeeds(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc &) {
        return false;
    }
}

} // namespace ostrel
