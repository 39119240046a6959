// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

namespace ostrel {

/// Memory that is filled at one go: the operating system hands it out in large pages, without a fault for every four
/// kilobytes. What is never touched costs nothing. Nothing when there is none to be had.
std::shared_ptr<std::byte> hugePages(std::size_t size);

} // namespace ostrel
