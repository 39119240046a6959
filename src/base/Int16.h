// SPDX-License-Identifier: MIT
#pragma once

#include "base/RunTimeError.h"

#include <cstdint>
#include <limits>

namespace ostrel {

/// A signed 16-bit counter. A value outside -32768 to 32767 raises the overflow error and leaves the counter as it was.
class Int16 {
public:
    constexpr Int16() = default;
    // Both conversions are implicit: a counter can be used wherever a number can.
    constexpr Int16(int value) : value_(checked(value)) {}
    constexpr operator int() const { return value_; }

    constexpr Int16 &operator+=(int step) { return *this = Int16(value_ + step); }
    constexpr Int16 &operator-=(int step) { return *this = Int16(value_ - step); }
    constexpr Int16 &operator++() { return *this += 1; }
    constexpr Int16 &operator--() { return *this -= 1; }

private:
    static constexpr std::int16_t checked(int value) {
        if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
            throw RunTimeError(ErrorNumber::Overflow);
        return static_cast<std::int16_t>(value);
    }

    std::int16_t value_ = 0;
};

} // namespace ostrel
