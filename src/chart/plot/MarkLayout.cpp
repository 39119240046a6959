// SPDX-License-Identifier: MIT
#include "chart/plot/MarkLayout.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace ostrel {

namespace {

constexpr int mostLinesUp = 4;
constexpr double shareForMoving = 0.18; // of the plot's height; a label moves up by no more
constexpr double fullHeightFrom = 240;  // pixels; in a lower plot the marks shrink with it

/// The numbers of the marks to draw, from left to right.
std::vector<std::size_t> tallestOfEachPixel(const std::vector<EventMark> &marks, const PlotLayout &layout) {
    struct Candidate {
        double place;
        bool up;
        int height;
        std::size_t number;
    };
    std::vector<Candidate> candidates;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const double time = marks[i].time;
        if (time >= layout.axes.timeMin && time <= layout.axes.timeMax)
            candidates.push_back({layout.snapped(layout.time.place(time)), marks[i].height >= 0,
                                  std::abs(static_cast<int>(marks[i].height)), i});
    }
    std::sort(candidates.begin(), candidates.end(), [](const Candidate &a, const Candidate &b) {
        return std::tuple(a.place, a.up, -a.height, a.number) < std::tuple(b.place, b.up, -b.height, b.number);
    });
    const auto last = std::unique(candidates.begin(), candidates.end(), [](const Candidate &a, const Candidate &b) {
        return a.place == b.place && a.up == b.up;
    });
    std::vector<std::size_t> numbers;
    for (auto candidate = candidates.begin(); candidate != last; ++candidate)
        numbers.push_back(candidate->number);
    return numbers;
}

PlacedMark stroke(const EventMark &mark, const PlotLayout &layout, const PlotTheme &theme) {
    const double shrunk = std::min(1.0, layout.plot.height() / fullHeightFrom);
    const double width = std::max(2.0, std::round(1.6 * layout.pixelRatio)) / layout.pixelRatio;
    const double x = layout.snapped(layout.time.place(mark.time) - width / 2);
    const double end = layout.snapped(layout.plot.bottom() - mark.height * shrunk);
    const QColor colour = colourFromBgr(mark.color);
    PlacedMark placed;
    placed.stroke = legible(colour, theme.ground, 2.6);
    placed.text = legible(colour, theme.ground, 4.5);
    placed.bar = QRectF(QPointF(x, end), QPointF(x + width, layout.plot.bottom())).normalized();
    placed.label = mark.label;
    return placed;
}

/// Gives each label a free place, in the order of the calls.
class LabelPlaces {
public:
    explicit LabelPlaces(const PlotLayout &layout)
        : layout_(layout), metrics_(markFont(layout)), line_(std::ceil(metrics_.height()) - 1) {}

    void place(PlacedMark &mark) {
        const double width = std::ceil(metrics_.horizontalAdvance(mark.label)) + 4;
        const QRectF plot = layout_.plot;
        if (!layout_.labelled || mark.label.isEmpty() || width > plot.width())
            return;
        const double x = std::clamp(mark.bar.center().x() - width / 2, plot.left() + 1, plot.right() - width);
        const double start = std::min(mark.bar.top(), plot.bottom()) - 1;
        const int mostUp = std::min(mostLinesUp, static_cast<int>(plot.height() * shareForMoving / line_));
        for (int up = 0; up <= mostUp; ++up) {
            const QRectF box(x, start - (up + 1) * line_, width, line_);
            if (box.top() < plot.top())
                return;
            if (taken(box))
                continue;
            taken_.push_back(box);
            mark.box = box;
            if (up > 0)
                mark.leader = QRectF(mark.bar.center().x() - layout_.lineWidth() / 2, box.bottom(), layout_.lineWidth(),
                                     start + 1 - box.bottom());
            return;
        }
    }

private:
    bool taken(const QRectF &box) const {
        return std::any_of(taken_.begin(), taken_.end(), [&](const QRectF &other) { return other.intersects(box); });
    }

    const PlotLayout &layout_;
    QFontMetricsF metrics_;
    double line_;
    std::vector<QRectF> taken_;
};

} // namespace

std::vector<PlacedMark> placeMarks(const std::vector<EventMark> &marks, const PlotLayout &layout,
                                   const PlotTheme &theme) {
    std::vector<PlacedMark> placed;
    for (const std::size_t number : tallestOfEachPixel(marks, layout))
        placed.push_back(stroke(marks[number], layout, theme));
    std::vector<PlacedMark *> order;
    order.reserve(placed.size());
    for (PlacedMark &mark : placed)
        order.push_back(&mark);
    std::stable_sort(order.begin(), order.end(),
                     [](const PlacedMark *a, const PlacedMark *b) { return a->bar.height() > b->bar.height(); });
    LabelPlaces places(layout);
    for (PlacedMark *mark : order)
        places.place(*mark);
    return placed;
}

QFont markFont(const PlotLayout &layout) {
    QFont font = layout.font;
    font.setPixelSize(std::max(6, qRound(layout.font.pixelSize() * 0.9)));
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace ostrel
