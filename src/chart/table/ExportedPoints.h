// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

namespace ostrel {

/// The number of points of an export from `TimeFrom` to `TimeTo` minutes at `SampleRate` points a second. It adds a
/// half and rounds halves to the even number: so a whole even number stays, a whole odd one grows by one.
inline double exportedPoints(float TimeFrom, float TimeTo, float SampleRate) {
    constexpr double secondsPerMinute = 60.0;
    return std::nearbyint((TimeTo - TimeFrom) * SampleRate * secondsPerMinute + 0.5);
}

} // namespace ostrel
