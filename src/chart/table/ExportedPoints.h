// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

namespace ostrel {

/// The points that an export from `TimeFrom` to `TimeTo` minutes has at `SampleRate` points a second: a whole number.
/// The half and the rounding to the nearest together: an even number of points stays, an odd one is rounded up.
inline double exportedPoints(float TimeFrom, float TimeTo, float SampleRate) {
    constexpr double secondsPerMinute = 60.0;
    return std::nearbyint((TimeTo - TimeFrom) * SampleRate * secondsPerMinute + 0.5);
}

} // namespace ostrel
