// SPDX-License-Identifier: MIT
#include "chart/plot/PlotPainter.h"

#include "chart/plot/TracePath.h"
#include "chart/run/AxisTitles.h"

namespace ostrel {

namespace {

constexpr double keyLength = 32;  // two dashes
constexpr double keyDistance = 8; // from the axis title
constexpr double dashLength = 12;
constexpr double dashGap = 8;

} // namespace

void PlotPainter::frame() {
    painter_.setFont(layout_.font);
    valueAxis(layout_.uvTicks, layout_.plot.left(), -1, theme_.uv);
    valueAxis(layout_.condTicks, layout_.plot.right(), 1, theme_.cond);
    axisTitle(uvAxisTitle(), layout_.uvTitleBox, -90, theme_.uv);
    axisTitle(condAxisTitle(), layout_.condTitleBox, 90, theme_.cond);
    timeAxis();
}

void PlotPainter::title(bool alone) {
    const QRectF box = alone ? layout_.headBox : layout_.titleBox;
    if (box.isEmpty())
        return;
    painter_.setFont(layout_.titleFont);
    painter_.setPen(theme_.text);
    painter_.drawText(box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      alone ? layout_.titleAlone : layout_.titleBesideNumbers);
}

void PlotPainter::timeAxis() {
    const QRectF plot = layout_.plot;
    const double line = layout_.lineWidth();
    painter_.setFont(layout_.font);
    painter_.setPen(theme_.text);
    bar(QRectF(plot.left() - line, plot.bottom(), plot.width() + 2 * line, line), theme_.axis);
    for (const Tick &tick : layout_.timeTicks) {
        const double length = tick.major ? tickLength : minorTickLength;
        bar(QRectF(tick.place, plot.bottom(), line, line + length), theme_.axis);
        label(tick);
    }
    axisTitle(layout_.timeTitle, layout_.timeTitleBox, 0, theme_.text);
}

void PlotPainter::valueAxis(const std::vector<Tick> &ticks, double axis, double outward, const QColor &ink) {
    const QRectF plot = layout_.plot;
    const double line = layout_.lineWidth();
    const double left = outward < 0 ? axis - line : axis;
    bar(QRectF(left, plot.top(), line, plot.height() + line), theme_.axis);
    painter_.setPen(ink);
    for (const Tick &tick : ticks) {
        const double length = tick.major ? tickLength : minorTickLength;
        const double start = outward < 0 ? left - length : axis + line;
        bar(QRectF(start, tick.place, length, line), theme_.axis);
        label(tick);
    }
}

void PlotPainter::axisTitle(const QString &text, const QRectF &box, double turn, const QColor &ink) {
    if (box.isEmpty())
        return;
    painter_.save();
    painter_.setPen(ink);
    painter_.translate(box.center());
    painter_.rotate(turn);
    const QSizeF size = turn == 0 ? box.size() : box.size().transposed();
    painter_.drawText(QRectF(QPointF(-size.width() / 2, -size.height() / 2), size), Qt::AlignCenter, text);
    painter_.restore();
}

void PlotPainter::label(const Tick &tick) {
    if (!tick.label.isEmpty())
        painter_.drawText(tick.box, Qt::AlignCenter | Qt::TextDontClip, tick.label);
}

void PlotPainter::grid() {
    const QRectF plot = layout_.plot;
    const double line = layout_.hairWidth();
    for (const Tick &tick : layout_.timeTicks) {
        if (tick.major && tick.place > plot.left() && tick.place < plot.right())
            bar(QRectF(tick.place, plot.top(), line, plot.height()), theme_.grid);
    }
    const double zero = layout_.snapped(layout_.uv.place(0));
    for (const Tick &tick : layout_.uvTicks) {
        if (tick.major && tick.place >= plot.top() && tick.place < plot.bottom())
            bar(QRectF(plot.left(), tick.place, plot.width(), line),
                tick.place == zero ? theme_.zeroLine : theme_.grid);
    }
}

void PlotPainter::marks(std::span<const PlacedMark> marks) {
    for (const PlacedMark &mark : marks) {
        if (!mark.leader.isEmpty()) // on paper an empty rectangle would leave a dot
            bar(mark.leader, mark.stroke);
        bar(mark.bar, mark.stroke);
    }
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setFont(markFont(layout_));
    for (const PlacedMark &mark : marks) {
        if (mark.box.isEmpty())
            continue;
        // A plate keeps the label legible where grid or strokes pass; it lets a trace through.
        QColor plate = theme_.ground;
        plate.setAlphaF(mark.overTrace ? 0.5F : 0.82F);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(plate);
        painter_.drawRoundedRect(mark.box, 3, 3);
        painter_.setPen(mark.text);
        painter_.drawText(mark.box, Qt::AlignCenter, mark.label);
    }
    painter_.restore();
}

void PlotPainter::offScale(std::span<const OffScale> signs) {
    constexpr double reach = OffScale::reach;
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    for (const OffScale &sign : signs) {
        const double inward = sign.above ? 1 : -1;
        const QPointF tip = sign.place + QPointF(0, inward);
        painter_.setPen(QPen(theme_.ground, 1));
        painter_.setBrush(inkOf(sign.trace));
        painter_.drawPolygon(QPolygonF{tip, tip + QPointF(-reach + 1, inward * (reach + 2)),
                                       tip + QPointF(reach - 1, inward * (reach + 2))});
    }
    painter_.restore();
}

void PlotPainter::setTracePen(Trace trace) {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(QPen(inkOf(trace), 1.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_.setBrush(Qt::NoBrush);
}

void PlotPainter::trace(Trace trace, const SampleStore &samples, double perPixel) {
    painter_.save();
    setTracePen(trace);
    painter_.setClipRect(layout_.plot);
    traceLines(trace, tracePath(trace, samples, layout_, perPixel));
    painter_.restore();
}

void PlotPainter::traceLines(Trace trace, const std::vector<QPolygonF> &lines) {
    for (const QPolygonF &line : trace == CondTrace ? dashed(lines, dashLength, dashGap) : lines)
        painter_.drawPolyline(line);
}

void PlotPainter::key(Trace trace) {
    const QRectF box = trace == UvTrace ? layout_.uvTitleBox : layout_.condTitleBox;
    const QString title = trace == UvTrace ? uvAxisTitle() : condAxisTitle();
    const double start = QFontMetricsF(layout_.font).horizontalAdvance(title) / 2 + keyDistance;
    if (start + keyLength > box.height() / 2)
        return;
    painter_.save();
    setTracePen(trace);
    painter_.translate(box.center());
    painter_.rotate(trace == UvTrace ? -90 : 90);
    traceLines(trace, {{{start, 0}, {start + keyLength, 0}}});
    painter_.restore();
}

} // namespace ostrel
