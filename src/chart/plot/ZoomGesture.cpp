// SPDX-License-Identifier: MIT
#include "chart/plot/ZoomGesture.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ostrel {

void ZoomGesture::press(const QPointF &place, const QRectF &plot) {
    active_ = plot.contains(place);
    plot_ = plot;
    start_ = end_ = place;
}

void ZoomGesture::move(const QPointF &place, const QRectF &plot) {
    plot_ = plot;
    end_ = {std::clamp(place.x(), plot_.left(), plot_.right()), std::clamp(place.y(), plot_.top(), plot_.bottom())};
}

QRectF ZoomGesture::rectangle() const {
    QRectF rectangle = drawn();
    const bool flat = rectangle.height() < least;
    const bool steep = rectangle.width() < least;
    if (flat && !steep)
        rectangle.setCoords(rectangle.left(), plot_.top(), rectangle.right(), plot_.bottom());
    else if (steep && !flat)
        rectangle.setCoords(plot_.left(), rectangle.top(), plot_.right(), rectangle.bottom());
    return rectangle;
}

std::optional<QRectF> ZoomGesture::release() {
    const bool meant = active_ && largeEnough();
    active_ = false;
    return meant ? std::optional(rectangle()) : std::nullopt;
}

namespace {

struct Ends {
    float min;
    float max;
};

Ends apart(double from, double to, double least) {
    const double greatest = std::max(std::abs(from), std::abs(to));
    const double distance = std::max(least, 256 * greatest * std::numeric_limits<float>::epsilon());
    if (to - from < distance) {
        const double middle = (from + to) / 2;
        from = middle - distance / 2;
        to = middle + distance / 2;
    }
    return {static_cast<float>(from), static_cast<float>(to)};
}

} // namespace

AxisValues axesOf(const QRectF &rectangle, const PlotLayout &layout) {
    const QRectF &plot = layout.plot;
    AxisValues axes = layout.axes;
    if (rectangle.top() > plot.top() || rectangle.bottom() < plot.bottom()) {
        const Ends uv = apart(layout.uv.value(rectangle.bottom()), layout.uv.value(rectangle.top()), 0.0001);
        const Ends cond = apart(layout.cond.value(rectangle.bottom()), layout.cond.value(rectangle.top()), 0.01);
        axes.uvMin = uv.min;
        axes.uvMax = uv.max;
        axes.condMin = cond.min;
        axes.condMax = cond.max;
    }
    if (rectangle.left() > plot.left() || rectangle.right() < plot.right()) {
        const Ends time = apart(layout.time.value(rectangle.left()), layout.time.value(rectangle.right()), 0.01);
        axes.timeMin = time.min;
        axes.timeMax = time.max;
    }
    return axes;
}

} // namespace ostrel
