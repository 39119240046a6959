// SPDX-License-Identifier: MIT
#include "chart/plot/PlotLayout.h"

#include "chart/run/AxisTitles.h"
#include "chart/run/PlainLocale.h"
#include "chart/run/TextLines.h"

#include <QFontInfo>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

enum class Shown { Everything, NoAxisTitles, NoHead, PlotOnly };

/// As wide as a number of the head may be.
constexpr const char *headTemplates[] = {"MM", "00000.00 min", "-00.0000 AU", "0000.00 mS/cm"};

QString labelOf(const TickSteps &steps, std::int64_t number) {
    const double value = number == 0 ? 0.0 : steps.value(number) / steps.unit; // no "-0.0"
    return plainLocale().toString(value, 'f', steps.decimals);
}

constexpr double hour = 60; // minutes
constexpr double day = 24 * hour;

/// Over three hours people count in parts of an hour, over a day in hours.
TickSteps timeSteps(double from, double to, double least) {
    struct Row {
        double step;
        int parts;
    };
    constexpr Row rows[] = {{10, 5},  {15, 3},  {20, 4},  {30, 3},  {60, 4},   {120, 4},
                            {180, 3}, {240, 4}, {360, 6}, {720, 4}, {1440, 4}, {2880, 4}};
    if (!(to - from > 3 * hour))
        return TickSteps::between(from, to, least);
    const bool inHours = to - from > day;
    const auto *const row = std::find_if(std::begin(rows), std::end(rows), [&](const Row &candidate) {
        return candidate.step >= std::max(least, inHours ? hour : 0.0) * (1 - 1e-9);
    });
    TickSteps steps;
    if (row == std::end(rows)) {
        steps = TickSteps::between(from / hour, to / hour, least / hour);
        steps.step *= hour;
    } else {
        steps.step = row->step;
        steps.parts = row->parts;
        steps.count(from, to);
    }
    steps.unit = inHours ? hour : 1;
    return steps;
}

/// The longest label has the most digits, and so is at an end of the axis.
double widest(const TickSteps &steps, const QFontMetricsF &metrics) {
    if (steps.last < steps.first)
        return 0;
    return std::max(metrics.horizontalAdvance(labelOf(steps, steps.first)),
                    metrics.horizontalAdvance(labelOf(steps, steps.last)));
}

/// Builds a layout part by part: each takes its room from those after it.
class Builder {
public:
    explicit Builder(PlotLayout &layout)
        : layout_(layout), metrics_(layout.font), titleMetrics_(layout.titleFont), line_(std::ceil(metrics_.height())),
          gap_(std::round(line_ * 0.35)) {}

    void build(const std::optional<QString> &title) {
        for (const Shown shown : {Shown::Everything, Shown::NoAxisTitles, Shown::NoHead, Shown::PlotOnly}) {
            placePlot(shown, title);
            if (layout_.plot.width() >= 8 * line_ && layout_.plot.height() >= 4 * line_)
                return placeParts(shown, title);
        }
        placeParts(Shown::PlotOnly, title);
    }

    void placeTimeTicks(bool labels) {
        layout_.time = Scale(layout_.axes.timeMin, layout_.axes.timeMax, layout_.plot.left(), layout_.plot.right());
        layout_.timeTicks.clear();
        const TickSteps steps = roomyTimeSteps();
        for (std::int64_t number = steps.first; number <= steps.last; ++number) {
            Tick tick{layout_.snapped(layout_.time.place(steps.value(number))), true, {}, {}};
            if (labels) {
                const QString label = labelOf(steps, number);
                const double width = std::ceil(metrics_.horizontalAdvance(label));
                tick.box = QRectF(tick.place - width / 2, layout_.timeLabelTop, width, line_);
                tick.label = fits(tick.box) ? label : QString();
            }
            layout_.timeTicks.push_back(tick);
        }
        addMinorTicks(layout_.timeTicks, layout_.time, steps);
        layout_.timeTitle = steps.unit == hour ? QStringLiteral("Time (h)") : timeAxisTitle();
    }

private:
    static bool hasHead(Shown shown, const std::optional<QString> &title) { return shown < Shown::NoHead && title; }

    void placePlot(Shown shown, const std::optional<QString> &title) {
        const double height = layout_.size.height();
        const double axisTitle = shown == Shown::Everything ? line_ + gap_ : 0;
        const bool labels = shown != Shown::PlotOnly;
        const double edge = labels ? gap_ : 1;
        const double top = hasHead(shown, title) ? std::ceil(titleMetrics_.height()) + 2 * gap_ : line_ / 2 + edge;
        const double under = labels ? labelDistance() + line_ + axisTitle + edge : edge;
        const double bottom = std::max(height - under, top + 1);

        // The height of the value axes decides their steps, and the steps decide the width of the labels.
        valueSteps_[0] = valueSteps(layout_.axes.uvMin, layout_.axes.uvMax, bottom - top);
        valueSteps_[1] = valueSteps(layout_.axes.condMin, layout_.axes.condMax, bottom - top);
        const auto side = [&](const TickSteps &steps) {
            return labels ? edge + axisTitle + std::ceil(widest(steps, metrics_)) + tickLength + gap_ : edge;
        };
        const double left = side(valueSteps_[0]);
        const double right = std::max(layout_.size.width() - side(valueSteps_[1]), left + 1);
        layout_.plot = QRectF(QPointF(layout_.snapped(left), layout_.snapped(top)),
                              QPointF(layout_.snapped(right), layout_.snapped(bottom)));
    }

    void placeParts(Shown shown, const std::optional<QString> &title) {
        const QRectF plot = layout_.plot;
        layout_.uv = Scale(layout_.axes.uvMin, layout_.axes.uvMax, plot.bottom(), plot.top());
        layout_.cond = Scale(layout_.axes.condMin, layout_.axes.condMax, plot.bottom(), plot.top());
        layout_.timeLabelTop = plot.bottom() + labelDistance();
        const bool labels = shown != Shown::PlotOnly;
        placeValueTicks(layout_.uvTicks, layout_.uv, valueSteps_[0], labels, false);
        placeValueTicks(layout_.condTicks, layout_.cond, valueSteps_[1], labels, true);
        layout_.labelled = labels;
        placeTimeTicks(labels);
        if (hasHead(shown, title))
            placeHead(*title);
        if (shown == Shown::Everything)
            placeAxisTitles();
    }

    /// Numbers matter more than the title, which the tab shows, too.
    void placeHead(const QString &title) {
        const QRectF plot = layout_.plot;
        const double height = plot.top() - std::ceil(line_ / 2);
        double right = plot.right();
        const double titleWidth = std::ceil(titleMetrics_.horizontalAdvance(title)) + line_;
        const auto placeColumn = [&](HeadColumn column) {
            const double width =
                std::ceil(titleMetrics_.horizontalAdvance(QLatin1String(headTemplates[column]))) + line_ / 2;
            if (right - width < plot.left() + (column == MarkColumn ? titleWidth : 0))
                return false;
            right -= width;
            layout_.headColumns[column] = QRectF(right, 0, width, height);
            return true;
        };
        for (const HeadColumn column : {CondColumn, UvColumn, TimeColumn, MarkColumn}) {
            if (!placeColumn(column))
                break;
        }
        layout_.headBox = QRectF(plot.left(), 0, plot.width(), height);
        layout_.titleAlone = titleMetrics_.elidedText(title, Qt::ElideRight, plot.width());
        const QRectF box(plot.left(), 0, right - plot.left() - line_, height);
        const QString shortened = titleMetrics_.elidedText(title, Qt::ElideRight, box.width());
        if (!title.isEmpty() && 2 * shortened.size() > title.size()) {
            layout_.titleBox = box;
            layout_.titleBesideNumbers = shortened;
        }
    }

    TickSteps valueSteps(double from, double to, double height) const {
        const double span = to > from ? to - from : 1e-6;
        return TickSteps::between(from, to, span / std::max(1.0, height) * line_ * 2.3);
    }

    void placeValueTicks(std::vector<Tick> &ticks, const Scale &scale, const TickSteps &steps, bool labels,
                         bool right) {
        const double distance = tickLength + gap_ / 2;
        for (std::int64_t number = steps.first; number <= steps.last; ++number) {
            Tick tick{layout_.snapped(scale.place(steps.value(number))), true, {}, {}};
            if (labels) {
                const QString label = labelOf(steps, number);
                const double width = std::ceil(metrics_.horizontalAdvance(label));
                const double x = right ? layout_.plot.right() + distance : layout_.plot.left() - distance - width;
                tick.box = QRectF(x, tick.place - line_ / 2, width, line_);
                tick.label = fits(tick.box) ? label : QString();
            }
            ticks.push_back(tick);
        }
        addMinorTicks(ticks, scale, steps);
    }

    TickSteps roomyTimeSteps() const {
        const double perPixel = 1 / std::max(1e-12, layout_.time.factor());
        const auto stepsFor = [&](double room) {
            return timeSteps(layout_.axes.timeMin, layout_.axes.timeMax, room * perPixel);
        };
        // Finer steps need longer labels, so the room is found by trial.
        double room = line_ * 4.5;
        TickSteps steps = stepsFor(room);
        while (steps.last >= steps.first && widest(steps, metrics_) + line_ > steps.step / perPixel) {
            room = std::max(room * 1.5, widest(steps, metrics_) + line_);
            steps = stepsFor(room);
        }
        return steps;
    }

    void addMinorTicks(std::vector<Tick> &ticks, const Scale &scale, const TickSteps &steps) const {
        const int parts = steps.parts;
        if (std::abs(scale.factor()) * steps.step / parts < 5)
            return;
        for (std::int64_t number = steps.first - 1; number <= steps.last; ++number) {
            for (int part = 1; part < parts; ++part) {
                const double value = (static_cast<double>(number) + static_cast<double>(part) / parts) * steps.step;
                const double place = layout_.snapped(scale.place(value));
                const bool across = &scale == &layout_.time;
                if (across ? place > layout_.plot.left() && place < layout_.plot.right()
                           : place > layout_.plot.top() && place < layout_.plot.bottom())
                    ticks.push_back({place, false, {}, {}});
            }
        }
    }

    void placeAxisTitles() {
        const QRectF plot = layout_.plot;
        const double width = layout_.size.width();
        const auto along = [&](const QString &text) { return metrics_.horizontalAdvance(text); };
        if (along(uvAxisTitle()) <= plot.height())
            layout_.uvTitleBox = QRectF(gap_, plot.top(), line_, plot.height());
        if (along(condAxisTitle()) <= plot.height())
            layout_.condTitleBox = QRectF(width - gap_ - line_, plot.top(), line_, plot.height());
        if (along(timeAxisTitle()) <= plot.width())
            layout_.timeTitleBox = QRectF(plot.left(), layout_.size.height() - gap_ - line_, plot.width(), line_);
    }

    bool fits(const QRectF &box) const { return QRectF(QPointF(), layout_.size).contains(box); }
    double labelDistance() const { return std::max(tickLength + 2, line_ / 2 + 1); } // clear of the value labels

    PlotLayout &layout_;
    QFontMetricsF metrics_;
    QFontMetricsF titleMetrics_;
    double line_;
    double gap_;
    TickSteps valueSteps_[2];
};

} // namespace

PlotLayout PlotLayout::of(const QSizeF &size, double pixelRatio, const AxisValues &axes, const QFont &font,
                          const std::optional<QString> &title) {
    PlotLayout layout;
    layout.size = size;
    layout.pixelRatio = pixelRatio;
    layout.axes = axes;
    const int pixels = std::max(1, QFontInfo(font).pixelSize());
    layout.font = font;
    layout.font.setPixelSize(pixels);
    layout.titleFont = layout.font;
    layout.titleFont.setPixelSize(qRound(pixels * 1.15));
    layout.titleFont.setWeight(QFont::DemiBold);
    Builder(layout).build(title ? std::optional(oneLine(*title)) : std::nullopt);
    return layout;
}

void PlotLayout::setTimeAxis(float from, float to) {
    axes.timeMin = from;
    axes.timeMax = to;
    Builder(*this).placeTimeTicks(labelled);
}

QRect PlotLayout::devicePlot() const {
    return QRect(QPoint(qRound(plot.left() * pixelRatio), qRound(plot.top() * pixelRatio)),
                 QPoint(qRound(plot.right() * pixelRatio) - 1, qRound(plot.bottom() * pixelRatio) - 1));
}

double PlotLayout::snapped(double place) const { return std::round(place * pixelRatio) / pixelRatio; }

double PlotLayout::hairWidth() const { return std::max(1.0, std::floor(pixelRatio / 2)) / pixelRatio; }

double PlotLayout::lineWidth() const { return std::max(1.0, std::round(pixelRatio)) / pixelRatio; }

} // namespace ostrel
