// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

#include <cmath>

namespace ostrel {

/// Lengths on screen are twips, 1/15 of a logical pixel.
namespace Twips {

inline constexpr float perPixel = 15;

inline int toPixels(float twips) { return static_cast<int>(std::lrint(twips / perPixel)); }
inline float fromPixels(int pixels) { return static_cast<float>(pixels) * perPixel; }
/// Rounds each edge by itself, so that adjacent rectangles meet.
inline QRect toPixels(const QRectF &twips) {
    const auto pixel = [](qreal edge) { return toPixels(static_cast<float>(edge)); };
    return {QPoint(pixel(twips.left()), pixel(twips.top())),
            QPoint(pixel(twips.right()) - 1, pixel(twips.bottom()) - 1)};
}

} // namespace Twips

} // namespace ostrel
