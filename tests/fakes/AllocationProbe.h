// SPDX-License-Identifier: MIT
#pragma once

#include <QScopedValueRollback>

#include <cstddef>

/// In the place of operator new of the test program.
namespace AllocationProbe {

extern std::size_t refusedFrom;

/// While it lives, whatever asks for that many bytes or more finds the memory used up.
struct OutOfMemory : QScopedValueRollback<std::size_t> {
    explicit OutOfMemory(std::size_t least) : QScopedValueRollback(refusedFrom, least) {}
};

} // namespace AllocationProbe
