// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

#include <cmath>

/// Lengths on screen are twips, 1/15 of a logical pixel.
namespace Twips {

inline constexpr float perPixel = 15;

inline int toPixels(float twips) { return static_cast<int>(std::lrint(twips / perPixel)); }
inline float fromPixels(int pixels) { return static_cast<float>(pixels) * perPixel; }
inline QRect toPixels(const QRectF &twips) {
    return {toPixels(static_cast<float>(twips.x())), toPixels(static_cast<float>(twips.y())),
            toPixels(static_cast<float>(twips.width())), toPixels(static_cast<float>(twips.height()))};
}

} // namespace Twips
