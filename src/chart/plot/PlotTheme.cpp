// SPDX-License-Identifier: MIT
#include "chart/plot/PlotTheme.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

double luminance(const QColor &colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor &a, const QColor &b, double shareOfB) {
    const auto mix = [shareOfB](int from, int to) { return qRound(from + (to - from) * shareOfB); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

PlotTheme themeOn(const QColor &ground, const QColor &text, const QColor &highlight) {
    const bool dark = luminance(text) > luminance(ground);
    return {.ground = ground,
            .text = text,
            .axis = mixed(ground, text, 0.45),
            .grid = mixed(ground, text, dark ? 0.12 : 0.09),
            .zeroLine = mixed(ground, text, dark ? 0.30 : 0.26),
            .uv = legible(dark ? QColor(0x6c, 0xa8, 0xff) : QColor(0x17, 0x56, 0xc2), ground, 4.5),
            .cond = legible(dark ? QColor(0xff, 0x7d, 0x70) : QColor(0xc8, 0x2b, 0x2b), ground, 4.5),
            .highlight = highlight};
}

} // namespace

PlotTheme PlotTheme::of(const QPalette &palette) {
    return themeOn(palette.color(QPalette::Base), palette.color(QPalette::Text), palette.color(QPalette::Highlight));
}

PlotTheme PlotTheme::paper() { return themeOn(Qt::white, Qt::black, Qt::gray); }

double contrast(const QColor &a, const QColor &b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor legible(const QColor &colour, const QColor &ground, double least) {
    const QColor end = luminance(ground) > 0.18 ? Qt::black : Qt::white;
    QColor made = colour;
    for (double share = 0.04; contrast(made, ground) < least && share <= 1; share += 0.04)
        made = mixed(colour, end, share);
    return made;
}

QColor colourFromBgr(qint32 bgr) { return {bgr & 0xff, (bgr >> 8) & 0xff, (bgr >> 16) & 0xff}; }

} // namespace ostrel
