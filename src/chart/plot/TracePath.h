// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"
#include "chart/plot/TraceColumns.h"

#include <QPolygonF>

#include <vector>

namespace ostrel {

/// A trace as polylines, one for each stretch without a gap: every sample while they are few, at most two points for
/// each of `perPixel` columns to a pixel when they are many.
std::vector<QPolygonF> tracePath(Trace trace, const SampleStore &samples, const PlotLayout &layout, double perPixel);

/// The lines in dashes with gaps between them, each as long as it reaches, whatever way the line takes in between: what
/// is noise beside a dash's length fills no gap.
std::vector<QPolygonF> dashed(const std::vector<QPolygonF> &lines, double dash, double gap);

} // namespace ostrel
