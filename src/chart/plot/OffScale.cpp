// SPDX-License-Identifier: MIT
#include "chart/plot/OffScale.h"

#include <algorithm>

namespace ostrel {

std::vector<OffScale> placeOffScale(const TraceColumns &traces, const PlotLayout &layout) {
    const QRectF plot = layout.plot;
    const double ratio = layout.pixelRatio;
    const int apart = static_cast<int>(3 * OffScale::reach * ratio);
    std::vector<OffScale> signs;
    for (const Trace trace : {CondTrace, UvTrace}) {
        for (const bool above : {true, false}) {
            for (const int column : traces.leaves(trace, above, apart)) {
                const double x = std::max(plot.left() + column / ratio, plot.left() + OffScale::reach);
                signs.push_back({trace, above, {x, above ? plot.top() : plot.bottom()}});
            }
        }
    }
    return signs;
}

} // namespace ostrel
