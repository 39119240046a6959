// SPDX-License-Identifier: MIT
#include "chart/plot/TracePath.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

/// Collects polylines. Points far outside the plot are moved nearer: dashing takes time along the whole line, and on a
/// very short axis the next sample may be extremely far away.
class Path {
public:
    explicit Path(const PlotLayout &layout) : room_(roomAround(layout.plot)) {}

    void add(double x, double y) {
        if (broken_)
            lines_.emplace_back();
        broken_ = false;
        lines_.back() << QPointF(std::clamp(x, room_.left(), room_.right()),
                                 std::clamp(y, room_.top(), room_.bottom()));
    }
    void breakHere() { broken_ = true; }

    /// A single point becomes a very short line, which a round pen shows as a dot.
    std::vector<QPolygonF> taken() {
        for (QPolygonF &line : lines_) {
            if (line.size() == 1)
                line << line.front() + QPointF(0.01, 0);
        }
        return std::move(lines_);
    }
    double lastPlace() const { return broken_ ? 0 : lines_.back().back().y(); }

private:
    static QRectF roomAround(const QRectF &plot) {
        const QPointF far(100 * plot.width(), 100 * plot.height());
        return {plot.topLeft() - far, plot.bottomRight() + far};
    }

    QRectF room_;
    bool broken_ = true;
    std::vector<QPolygonF> lines_;
};

} // namespace

std::vector<QPolygonF> tracePath(Trace trace, const SampleStore &samples, const PlotLayout &layout, double perPixel) {
    const Scale &values = trace == UvTrace ? layout.uv : layout.cond;
    const auto number = [&](double time) { return std::clamp(time * samplesPerMinute, -2.0, 9e15); };
    const auto first = std::clamp<qint64>(static_cast<qint64>(number(layout.axes.timeMin)) - 1, 0, samples.size());
    const auto end = std::clamp<qint64>(static_cast<qint64>(number(layout.axes.timeMax)) + 2, first, samples.size());
    const double columns = std::max(1.0, std::floor(layout.plot.width() * perPixel));
    const double inOne = static_cast<double>(end - first) / columns;
    Path path(layout);
    if (inOne <= 4) {
        for (qint64 i = first; i < end; ++i) {
            const SamplePair sample = samples.at(i);
            const float value = trace == UvTrace ? sample.uv : sample.cond;
            if (std::isfinite(value))
                path.add(layout.time.place(static_cast<double>(i) / samplesPerMinute), values.place(value));
            else
                path.breakHere();
        }
        return path.taken();
    }
    for (qint64 from = first, column = 1; from < end; ++column) {
        const qint64 to = std::min(end, first + static_cast<qint64>(std::ceil(static_cast<double>(column) * inOne)));
        const Extent extent = samples.extent(from, to);
        const double low = values.place(trace == UvTrace ? extent.uvMin() : extent.condMin());
        const double high = values.place(trace == UvTrace ? extent.uvMax() : extent.condMax());
        const double x = layout.time.place(static_cast<double>(from + to - 1) / 2 / samplesPerMinute);
        if (!std::isfinite(low)) {
            path.breakHere();
        } else if (std::abs(path.lastPlace() - low) < std::abs(path.lastPlace() - high)) {
            path.add(x, low); // the nearer end first, so that the line makes no detour
            path.add(x, high);
        } else {
            path.add(x, high);
            path.add(x, low);
        }
        from = to;
    }
    return path.taken();
}

TraceColumns tracesOn(const PlotLayout &layout, const SampleStore &samples) {
    TraceColumns traces;
    const QSize plot = layout.devicePlot().size();
    traces.setPlot(layout.axes, plot.width(), plot.height(), tracePenRadius * static_cast<float>(layout.pixelRatio));
    traces.reduce(samples, 0, traces.columns());
    return traces;
}

namespace {

/// The point where the line from `from`, within `reach` of the centre, to `to`, outside it, leaves that circle.
QPointF leaving(const QPointF &centre, double reach, const QPointF &from, const QPointF &to) {
    const QPointF way = to - from;
    const QPointF start = from - centre;
    const double a = QPointF::dotProduct(way, way);
    const double b = QPointF::dotProduct(start, way);
    const double c = QPointF::dotProduct(start, start) - reach * reach;
    return from + way * std::clamp((std::sqrt(std::max(0.0, b * b - a * c)) - b) / a, 0.0, 1.0);
}

void addDashes(const QPolygonF &line, double dash, double gap, std::vector<QPolygonF> &dashes) {
    QPointF start = line.first(); // of the dash or the gap
    QPointF last = start;
    bool inDash = true;
    dashes.push_back({start});
    for (const QPointF &point : line) {
        for (double reach = inDash ? dash : gap; QLineF(start, point).length() > reach; reach = inDash ? dash : gap) {
            start = last = leaving(start, reach, last, point);
            if (inDash)
                dashes.back() << start;
            else
                dashes.push_back({start});
            inDash = !inDash;
        }
        if (inDash)
            dashes.back() << point;
        last = point;
    }
}

} // namespace

std::vector<QPolygonF> dashed(const std::vector<QPolygonF> &lines, double dash, double gap) {
    std::vector<QPolygonF> dashes;
    for (const QPolygonF &line : lines)
        addDashes(line, dash, gap, dashes);
    return dashes;
}

} // namespace ostrel
