// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>

namespace ostrel {

/// The rectangle that the operator draws on the plot to zoom in. A flat one, lower than 8 logical pixels, means the
/// time axis alone, a steep one, narrower than that, the value axes alone; what is both is a click.
class ZoomGesture {
public:
    /// Begins a rectangle at a place in the plot. A place outside begins none.
    void press(const QPointF &place, const QRectF &plot);
    void move(const QPointF &place, const QRectF &plot);
    /// Ends the gesture. Returns the rectangle if it is large enough to be intended.
    std::optional<QRectF> release();
    void cancel() { active_ = false; }

    bool active() const { return active_; }
    bool largeEnough() const { return drawn().width() >= least || drawn().height() >= least; }
    /// From the place of the press to the pointer, within the plot; as high as the plot when it is flat, as wide when
    /// it is steep.
    QRectF rectangle() const;

private:
    static constexpr double least = 8;

    QRectF drawn() const { return QRectF(start_, end_).normalized(); }

    bool active_ = false;
    QRectF plot_;
    QPointF start_;
    QPointF end_;
};

} // namespace ostrel
