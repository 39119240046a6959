// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>

using namespace ostrel;

/// Throws std::logic_error where a scenario finds a rule broken.
inline void require(bool holds) {
    if (!holds)
        throw std::logic_error("a scenario broke the rules");
}
