// SPDX-License-Identifier: MIT
#include "chart/hands/Navigation.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ostrel {

namespace {

constexpr double leastTime = 0.01;
constexpr double leastUv = 0.0001;
constexpr double leastCond = 0.01;

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

void setTime(AxisValues &axes, double from, double to) {
    const Ends ends = apart(from, to, leastTime);
    axes.timeMin = ends.min;
    axes.timeMax = ends.max;
}

void setUv(AxisValues &axes, double from, double to) {
    const Ends ends = apart(from, to, leastUv);
    axes.uvMin = ends.min;
    axes.uvMax = ends.max;
}

void setCond(AxisValues &axes, double from, double to) {
    const Ends ends = apart(from, to, leastCond);
    axes.condMin = ends.min;
    axes.condMax = ends.max;
}

} // namespace

AxisValues axesOf(const QRectF &rectangle, const PlotLayout &layout) {
    const QRectF &plot = layout.plot;
    AxisValues axes = layout.axes;
    if (rectangle.top() > plot.top() || rectangle.bottom() < plot.bottom()) {
        setUv(axes, layout.uv.value(rectangle.bottom()), layout.uv.value(rectangle.top()));
        setCond(axes, layout.cond.value(rectangle.bottom()), layout.cond.value(rectangle.top()));
    }
    if (rectangle.left() > plot.left() || rectangle.right() < plot.right())
        setTime(axes, layout.time.value(rectangle.left()), layout.time.value(rectangle.right()));
    return axes;
}

Navigation::Navigation(const AxisValues &shown, const AxisValues &widest, float lastTime)
    : shown_(shown), widest_(widest), lastTime_(lastTime) {
    widest_.timeMin = std::min(widest_.timeMin, 0.0F);
    widest_.timeMax = std::max(widest_.timeMax, lastTime);
}

AxisValues Navigation::panned(double lengths) const {
    const double now = shown_.timeMin;
    const double length = double(shown_.timeMax) - now;
    const double earliest = std::min(0.0, now);
    const double latest = std::max(double(lastTime_) - length, now);
    const double from = std::clamp(now + lengths * length, earliest, latest);
    AxisValues axes = shown_;
    if (from != now)
        setTime(axes, from, from + length);
    return axes;
}

/// The part `fixed` of it stays where it is, unless the stretch would leave `within`.
Navigation::Stretch Navigation::grown(Stretch stretch, double factor, double fixed, Stretch within) {
    const double place = stretch.from + fixed * (stretch.to - stretch.from);
    const Stretch grown{place + factor * (stretch.from - place), place + factor * (stretch.to - place)};
    return factor < 1 ? grown : Stretch{std::max(grown.from, within.from), std::min(grown.to, within.to)};
}

AxisValues Navigation::zoomed(double factor, std::optional<double> x, std::optional<double> y) const {
    AxisValues axes = shown_;
    if (x) {
        const Stretch time = grown({shown_.timeMin, shown_.timeMax}, factor, *x, {widest_.timeMin, widest_.timeMax});
        setTime(axes, time.from, time.to);
    }
    if (y) {
        const Stretch uv = grown({shown_.uvMin, shown_.uvMax}, factor, *y, {widest_.uvMin, widest_.uvMax});
        setUv(axes, uv.from, uv.to);
        const Stretch cond = grown({shown_.condMin, shown_.condMax}, factor, *y, {widest_.condMin, widest_.condMax});
        setCond(axes, cond.from, cond.to);
    }
    return axes;
}

AxisValues Navigation::uvScaled(double factor) const {
    constexpr double most = 2; // AU, as in the panel
    const double place = std::clamp(0.0, double(shown_.uvMin), std::max(double(shown_.uvMin), double(shown_.uvMax)));
    const auto moved = [&](float end) { return std::clamp(place + factor * (end - place), -most, most); };
    AxisValues axes = shown_;
    setUv(axes, moved(shown_.uvMin), moved(shown_.uvMax));
    return axes;
}

bool Navigation::isWidest(const AxisValues &axes) const {
    return axes.timeMin <= widest_.timeMin && axes.timeMax >= widest_.timeMax && axes.uvMin <= widest_.uvMin &&
           axes.uvMax >= widest_.uvMax && axes.condMin <= widest_.condMin && axes.condMax >= widest_.condMax;
}

} // namespace ostrel
