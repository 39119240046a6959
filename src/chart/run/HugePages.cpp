// SPDX-License-Identifier: MIT
#include "chart/run/HugePages.h"

#include <sys/mman.h>

#include <cstdint>

namespace ostrel {

std::shared_ptr<std::byte> hugePages(std::size_t size) {
    constexpr std::uintptr_t page = 1 << 21;
    const std::size_t mapped = size + page; // so that `size` bytes fit behind a page boundary
    void *const memory =
        ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    const std::shared_ptr<void> owner(memory, [mapped](void *at) { ::munmap(at, mapped); });
    const auto start = reinterpret_cast<std::uintptr_t>(memory);
    auto *const begin = static_cast<std::byte *>(memory) + (((start + page - 1) & ~(page - 1)) - start);
    ::madvise(begin, (size + page - 1) & ~(page - 1), MADV_HUGEPAGE);
    return {owner, begin};
}

} // namespace ostrel
