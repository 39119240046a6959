// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"

#include <QRectF>

#include <optional>

namespace ostrel {

/// The axes that show a rectangle of the plot; along one as long as the plot they stay as they are. Each axis has a
/// least length, so that its values can be told apart: 0.01 minute, 0.0001 AU, 0.01 mS/cm, and never less than 256
/// steps of a float.
AxisValues axesOf(const QRectF &rectangle, const PlotLayout &layout);

/// The ways through a run with wheel and keys. Each answers the axes to show; those shown, where a way is at its end.
class Navigation {
public:
    /// `widest` are the axes from before the first zoom: no way leads beyond them, nor beyond the run, which ends at
    /// `lastTime` minutes.
    Navigation(const AxisValues &shown, const AxisValues &widest, float lastTime);

    /// Along the run, by so many lengths of the time axis, to its beginning when below 0.
    AxisValues panned(double lengths) const;
    AxisValues toStart() const { return panned(-endless); }
    AxisValues toEnd() const { return panned(endless); }
    /// All axes `factor` times as long. What is at (x, y) stays there: parts of the plot from its left and its lower
    /// edge. Without an x the time axis stays, without a y the value axes.
    AxisValues zoomed(double factor, std::optional<double> x, std::optional<double> y) const;
    /// The UV axis `factor` times as long, with 0 AU in its place, or the end that is nearest to it.
    AxisValues uvScaled(double factor) const;
    /// There is nothing around these axes.
    bool isWidest(const AxisValues &axes) const;

private:
    static constexpr double endless = 1e9;

    struct Stretch {
        double from, to;
    };
    static Stretch grown(Stretch stretch, double factor, double fixed, Stretch within);

    AxisValues shown_;
    AxisValues widest_; ///< the run included
    float lastTime_;
};

} // namespace ostrel
