// SPDX-License-Identifier: MIT
#include "fakes/AllocationProbe.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

std::size_t allocations = 0;
std::size_t refusedFrom = std::numeric_limits<std::size_t>::max();

} // namespace

std::size_t AllocationProbe::count() { return allocations; }

AllocationProbe::OutOfMemory::OutOfMemory(std::size_t least) { refusedFrom = least; }
AllocationProbe::OutOfMemory::~OutOfMemory() { refusedFrom = std::numeric_limits<std::size_t>::max(); }

void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
    ++allocations;
    return size < refusedFrom ? std::malloc(size) : nullptr;
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
