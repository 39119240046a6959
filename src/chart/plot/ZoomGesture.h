// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"

#include <QPointF>
#include <QRectF>

#include <optional>

namespace ostrel {

/// The rectangle that the operator draws on the plot to zoom in.
class ZoomGesture {
public:
    /// Begins a rectangle at a place in the plot. A place outside begins none.
    void press(const QPointF &place, const QRectF &plot);
    void move(const QPointF &place);
    /// Ends the gesture. Returns the rectangle if it is large enough to be intended.
    std::optional<QRectF> release();
    void cancel() { active_ = false; }

    bool active() const { return active_; }
    /// The rectangle from the place of the press to the pointer, within the plot.
    QRectF rectangle() const { return QRectF(start_, end_).normalized(); }
    bool largeEnough() const { return rectangle().width() >= least && rectangle().height() >= least; }

private:
    static constexpr double least = 8; // logical pixels; less counts as a click

    bool active_ = false;
    QRectF plot_;
    QPointF start_;
    QPointF end_;
};

/// The axes that show a rectangle of the plot. Each axis has a least length, so that its values can be told apart: 0.01
/// minute, 0.0001 AU, 0.01 mS/cm, and never less than 256 steps of a float.
AxisValues axesOf(const QRectF &rectangle, const PlotLayout &layout);

} // namespace ostrel
