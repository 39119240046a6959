// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

namespace ostrel {

/// Memory to be filled at once. The operating system is asked for pages of 2 MiB, which cause far fewer page faults
/// than pages of 4 KiB. Pages that are never touched cost nothing. Null when there is no memory.
std::shared_ptr<std::byte> hugePages(std::size_t size);

} // namespace ostrel
