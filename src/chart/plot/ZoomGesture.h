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
    /// Begins at a place in the plot; elsewhere nothing begins.
    void press(const QPointF &place, const QRectF &plot);
    void move(const QPointF &place);
    /// The rectangle drawn, if it is large enough to be meant.
    std::optional<QRectF> release();
    void cancel() { active_ = false; }

    bool active() const { return active_; }
    /// From where it began to where the pointer is, within the plot.
    QRectF rectangle() const { return QRectF(start_, end_).normalized(); }
    bool largeEnough() const { return rectangle().width() >= least && rectangle().height() >= least; }

private:
    static constexpr double least = 8; // logical pixels; less is a click with an unsteady hand

    bool active_ = false;
    QRectF plot_;
    QPointF start_;
    QPointF end_;
};

/// The axes of a rectangle of the plot. No axis gets so short that its values can no longer be told
/// apart: 0.01 minute, 0.0001 AU, 0.01 mS/cm, and never less than the floats themselves allow.
AxisValues axesOf(const QRectF &rectangle, const PlotLayout &layout);

} // namespace ostrel
