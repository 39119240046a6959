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
    QColor highlight; ///< the rectangle of a zoom in the making

    /// Light or dark as the palette is.
    static PlotTheme of(const QPalette &palette);
    /// Dark ink on white, whatever the screen looks like.
    static PlotTheme paper();

    bool operator==(const PlotTheme &) const = default;
};

/// The contrast of two colours, from 1 (not at all) to 21 (black and white).
double contrast(const QColor &a, const QColor &b);

/// The colour, as much darker or lighter as it takes to reach that contrast against the ground. The hue stays.
QColor legible(const QColor &colour, const QColor &ground, double least);

/// A colour given as 0xBBGGRR.
QColor colourFromBgr(qint32 bgr);

} // namespace ostrel
