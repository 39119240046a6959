// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Watches operator new of the test program.
namespace AllocationProbe {

std::size_t count();

/// While it lives, whatever asks for that many bytes or more finds the memory used up.
struct OutOfMemory {
    explicit OutOfMemory(std::size_t least);
    ~OutOfMemory();
    OutOfMemory(const OutOfMemory &) = delete;
    OutOfMemory &operator=(const OutOfMemory &) = delete;
};

} // namespace AllocationProbe
