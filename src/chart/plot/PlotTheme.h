// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

namespace ostrel {

/// The colours of a chart.
struct PlotTheme {
    QColor ground;
    QColor text;
    QColor axis; ///< frame and ticks
    QColor grid;
    QColor zeroLine; ///< the grid line at 0 AU
    QColor uv;
    QColor cond;
    QColor highlight; ///< the rectangle that is drawn to zoom in

    /// Light or dark like the palette.
    static PlotTheme of(const QPalette &palette);
    /// Dark ink on white, whatever the screen looks like.
    static PlotTheme paper();

    bool operator==(const PlotTheme &) const = default;
};

/// The contrast of two colours, from 1 (equal) to 21 (black and white).
double contrast(const QColor &a, const QColor &b);

/// The colour, made darker or lighter until its contrast against the ground is at least `least`. The hue stays.
QColor legible(const QColor &colour, const QColor &ground, double least);

/// A colour given as 0xBBGGRR.
QColor colourFromBgr(qint32 bgr);

} // namespace ostrel
