// SPDX-License-Identifier: MIT
#include "chart/run/Provenance.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

QDateTime Provenance::dateAt(double minutes) const {
    constexpr double msPerMinute = 60000;
    const auto next = std::find_if(stretches.begin(), stretches.end(),
                                   [&](const Stretch &stretch) { return stretch.from > minutes; });
    if (next == stretches.begin())
        return {};
    const Stretch &stretch = *std::prev(next);
    double ms = (minutes - stretch.from) * msPerMinute;
    for (const ClockStep &step : clockSteps) {
        if (step.minutes > stretch.from && step.minutes <= minutes)
            ms += step.seconds * 1000;
    }
    return stretch.begun.addMSecs(std::llround(ms));
}

} // namespace ostrel
