// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "chart/run/Run.h"

namespace ostrel {

/// The state of a tab whose chart shows its own axes, with a time window of `WindowMinutes`.
inline ChartViewState chartViewOf(const Run &chart, double WindowMinutes) {
    return {chart.UvAxisMin(),   chart.UvAxisMax(),   chart.CondAxisMin(),
            chart.CondAxisMax(), chart.TimeAxisMin(), static_cast<float>(WindowMinutes)};
}

} // namespace ostrel
