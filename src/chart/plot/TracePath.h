// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"
#include "chart/plot/TraceColumns.h"

#include <QPolygonF>

#include <vector>

namespace ostrel {

/// A trace as polylines, one for each part without a gap. There are `perPixel` columns in a pixel. Up to four samples
/// in a column are drawn one by one; with more, a column gets at most two points.
std::vector<QPolygonF> tracePath(Trace trace, const SampleStore &samples, const PlotLayout &layout, double perPixel);

/// What the traces cover of the plot, in its pixels on the device.
TraceColumns tracesOn(const PlotLayout &layout, const SampleStore &samples);

/// Cuts the lines into dashes and gaps. Their lengths are straight distances from end to end, not lengths along the
/// line: noise that is small beside a dash does not fill the gaps.
std::vector<QPolygonF> dashed(const std::vector<QPolygonF> &lines, double dash, double gap);

} // namespace ostrel
