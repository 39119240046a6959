// SPDX-License-Identifier: MIT
#include "chart/plot/MarkLayout.h"

#include "chart/run/TextLines.h"

#include <QFontMetricsF>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace ostrel {

namespace {

constexpr int mostLinesUp = 4;
constexpr double shareForMoving = 0.18; // of the plot's height; a label moves up by no more
constexpr double fullHeightFrom = 240;  // pixels; in a lower plot the marks shrink with it

/// Marks at one pixel, of one direction, each of another kind.
struct Group {
    std::vector<const EventMark *> members; ///< the tallest first
    QString label;                          ///< in the order of their times
};

/// All events with a number are of one kind.
QString kindOf(const EventMark &mark) {
    bool isNumber = false;
    mark.label.toInt(&isNumber);
    return isNumber ? QStringLiteral("#") : mark.label;
}

int heightOf(const EventMark *mark) { return std::abs(static_cast<int>(mark->height)); }

Group grouped(const std::vector<const EventMark *> &marks) {
    Group group;
    QStringList labels;
    for (const EventMark *mark : marks) {
        const auto sameKind = [&](const EventMark *member) { return kindOf(*member) == kindOf(*mark); };
        const auto known = std::find_if(group.members.begin(), group.members.end(), sameKind);
        if (known == group.members.end()) {
            group.members.push_back(mark);
            labels << oneLine(mark->label);
        } else if (heightOf(mark) > heightOf(*known)) {
            *known = mark;
        }
    }
    std::stable_sort(group.members.begin(), group.members.end(),
                     [](const EventMark *a, const EventMark *b) { return heightOf(a) > heightOf(b); });
    labels.removeAll(QString());
    group.label = labels.join(QLatin1Char(' '));
    return group;
}

/// The marks to draw, from left to right.
std::vector<Group> groupsOf(const std::vector<EventMark> &marks, const PlotLayout &layout) {
    struct Candidate {
        double place;
        bool up;
        float time;
        std::size_t number;
    };
    std::vector<Candidate> candidates;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const float time = marks[i].time;
        if (time >= layout.axes.timeMin && time <= layout.axes.timeMax)
            candidates.push_back({layout.snapped(layout.time.place(time)), marks[i].height >= 0, time, i});
    }
    std::sort(candidates.begin(), candidates.end(), [](const Candidate &a, const Candidate &b) {
        return std::tie(a.place, a.up, a.time, a.number) < std::tie(b.place, b.up, b.time, b.number);
    });
    std::vector<Group> groups;
    for (auto first = candidates.begin(); first != candidates.end();) {
        std::vector<const EventMark *> together;
        auto next = first;
        for (; next != candidates.end() && next->place == first->place && next->up == first->up; ++next)
            together.push_back(&marks[next->number]);
        groups.push_back(grouped(together));
        first = next;
    }
    return groups;
}

PlacedMark stroke(const EventMark &mark, const PlotLayout &layout, const PlotTheme &theme) {
    const double shrunk = std::min(1.0, layout.plot.height() / fullHeightFrom);
    const double width = std::max(2.0, std::round(1.6 * layout.pixelRatio)) / layout.pixelRatio;
    const double x = layout.snapped(layout.time.place(mark.time) - width / 2);
    const double end = layout.snapped(layout.plot.bottom() - mark.height * shrunk);
    const QColor colour = colourFromBgr(mark.color);
    PlacedMark placed;
    placed.stroke = legible(colour, theme.ground, 3);
    placed.text = legible(colour, theme.ground, 4.5);
    placed.bar = QRectF(QPointF(x, end), QPointF(x + width, layout.plot.bottom())).normalized();
    return placed;
}

/// Gives each label a free place, in the order of the calls.
class LabelPlaces {
public:
    LabelPlaces(const PlotLayout &layout, const TraceColumns &traces)
        : layout_(layout), traces_(traces), metrics_(markFont(layout)), line_(std::ceil(metrics_.height()) - 1) {}

    void place(PlacedMark &mark) {
        const double width = std::ceil(metrics_.horizontalAdvance(mark.label)) + 4;
        if (!layout_.labelled || mark.label.isEmpty() || width > layout_.plot.width())
            return;
        const std::vector<QRectF> places = free(mark, width);
        const auto clear = std::find_if(places.begin(), places.end(), [&](const QRectF &box) { return !onTrace(box); });
        if (places.empty())
            return;
        mark.overTrace = clear == places.end();
        mark.box = mark.overTrace ? places.front() : *clear;
        taken_.push_back(mark.box);
        const double middle = mark.bar.center().x();
        const bool above = mark.box.left() < middle && mark.box.right() > middle;
        if (above && mark.box.bottom() < start(mark))
            mark.leader = QRectF(middle - layout_.lineWidth() / 2, mark.box.bottom(), layout_.lineWidth(),
                                 start(mark) + 1 - mark.box.bottom());
    }

private:
    double start(const PlacedMark &mark) const { return std::min(mark.bar.top(), layout_.plot.bottom()) - 1; }

    /// The places that no other label has taken, the best one first.
    std::vector<QRectF> free(const PlacedMark &mark, double width) const {
        constexpr double beside = 2;
        const QRectF plot = layout_.plot;
        const double above = std::clamp(mark.bar.center().x() - width / 2, plot.left() + 1, plot.right() - width);
        const int mostUp = std::min(mostLinesUp, static_cast<int>(plot.height() * shareForMoving / line_));
        std::vector<QRectF> places;
        const auto offer = [&](double left, double top) {
            const QRectF box(left, top, width, line_);
            const bool within = box.left() >= plot.left() && box.right() <= plot.right() && box.top() >= plot.top();
            if (within && box.bottom() <= plot.bottom() && !taken(box))
                places.push_back(box);
        };
        for (int up = 0; up <= mostUp; ++up) {
            const double top = start(mark) - (up + 1) * line_;
            offer(above, top);
            if (up == 0 && mark.bar.height() >= line_) {
                offer(mark.bar.right() + beside, mark.bar.top());
                offer(mark.bar.left() - beside - width, mark.bar.top());
            }
        }
        return places;
    }

    bool taken(const QRectF &box) const {
        return std::any_of(taken_.begin(), taken_.end(), [&](const QRectF &other) { return other.intersects(box); });
    }
    bool onTrace(const QRectF &box) const {
        const QRectF inPlot = box.translated(-layout_.plot.topLeft());
        const double ratio = layout_.pixelRatio;
        return traces_.touch(static_cast<int>(inPlot.left() * ratio), static_cast<int>(inPlot.right() * ratio) + 1,
                             static_cast<float>(inPlot.top() * ratio), static_cast<float>(inPlot.bottom() * ratio));
    }

    const PlotLayout &layout_;
    const TraceColumns &traces_;
    QFontMetricsF metrics_;
    double line_;
    std::vector<QRectF> taken_;
};

} // namespace

std::vector<PlacedMark> placeMarks(const std::vector<EventMark> &marks, const PlotLayout &layout,
                                   const PlotTheme &theme, const TraceColumns &traces) {
    std::vector<PlacedMark> placed;
    for (const Group &group : groupsOf(marks, layout)) {
        for (const EventMark *mark : group.members) {
            placed.push_back(stroke(*mark, layout, theme));
            placed.back().label = mark == group.members.front() ? group.label : QString();
        }
    }
    std::vector<PlacedMark *> order;
    order.reserve(placed.size());
    for (PlacedMark &mark : placed)
        order.push_back(&mark);
    std::stable_sort(order.begin(), order.end(),
                     [](const PlacedMark *a, const PlacedMark *b) { return a->bar.height() > b->bar.height(); });
    LabelPlaces places(layout, traces);
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
