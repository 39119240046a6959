// SPDX-License-Identifier: MIT
#include "fakes/AllocationProbe.h"

#include <cstdlib>
#include <limits>
#include <new>

std::size_t AllocationProbe::refusedFrom = std::numeric_limits<std::size_t>::max();

void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
    return size < AllocationProbe::refusedFrom ? std::malloc(size) : nullptr;
}
void *operator new(std::size_t size) {
    void *memory = operator new(size, std::nothrow);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void *memory, const std::nothrow_t &) noexcept { std::free(memory); }
