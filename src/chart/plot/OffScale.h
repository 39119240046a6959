// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"
#include "chart/plot/TraceColumns.h"

#include <QPointF>

#include <vector>

namespace ostrel {

/// The sign at the plot's edge that a trace goes on beyond it.
struct OffScale {
    static constexpr double reach = 5; ///< to either side of its place, and into the plot

    Trace trace;
    bool above;
    QPointF place; ///< on the edge, where the trace leaves
};

/// One for each place where a trace leaves the plot; where it does so again and again, as many as can be told apart.
std::vector<OffScale> placeOffScale(const TraceColumns &traces, const PlotLayout &layout);

} // namespace ostrel
