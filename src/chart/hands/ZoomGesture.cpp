// SPDX-License-Identifier: MIT
#include "chart/hands/ZoomGesture.h"

#include <algorithm>

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

} // namespace ostrel
