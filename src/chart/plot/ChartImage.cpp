// SPDX-License-Identifier: MIT
#include "chart/plot/ChartImage.h"

#include "chart/plot/PlotPainter.h"

#include <algorithm>

namespace ostrel {

namespace {

/// The views differ at most in their time axis.
bool onlyTimeMoved(const ChartView &from, const ChartView &to) {
    ChartView moved = from;
    moved.axes.timeMin = to.axes.timeMin;
    moved.axes.timeMax = to.axes.timeMax;
    return moved == to;
}

} // namespace

void ChartImage::draw(const ChartData &data, const ChartView &view) {
    const bool moved = !(view == view_);
    if (isNull() || moved) {
        const bool frameStays = !isNull() && onlyTimeMoved(view_, view);
        view_ = view;
        if (frameStays)
            layout_.setTimeAxis(view.axes.timeMin, view.axes.timeMax);
        else
            layout_ = PlotLayout::of(view.size, view.pixelRatio, view.axes, view.font, view.title);
        const QRect plot = layout_.devicePlot();
        columns_.setPlot(view.axes, plot.width(), plot.height(), tracePenRadius * static_cast<float>(view.pixelRatio));
        if (frameStays)
            moveTimeAxis();
        else
            paintAll();
    }
    const auto [firstChanged, endChanged] = columns_.reduce(data.samples, 0, columns_.columns());
    if (moved || firstChanged < endChanged || drawnMarks_ != data.marks.size())
        placeNewMarks(data);
    raster_.draw(image_, columns_, 0, columns_.columns());
    drawnSamples_ = data.samples.size();
}

void ChartImage::drawNew(const ChartData &data) {
    const bool marksAdded = drawnMarks_ != data.marks.size();
    bool labelsTouched = false;
    if (drawnSamples_ != data.samples.size()) {
        const auto [first, end] = columns_.columnsOfNews(drawnSamples_, data.samples.size());
        if (first < end) {
            const auto [firstChanged, endChanged] = columns_.reduce(data.samples, first, end);
            raster_.draw(image_, columns_, firstChanged, endChanged);
            const auto [left, right] = placesOf(first, end);
            labelsTouched = labelWithin(left, right);
        }
        drawnSamples_ = data.samples.size();
    }
    if (marksAdded || labelsTouched)
        placeNewMarks(data);
}

std::pair<double, double> ChartImage::placesOf(int firstColumn, int endColumn) const {
    return {layout_.plot.left() + firstColumn / view_.pixelRatio, layout_.plot.left() + endColumn / view_.pixelRatio};
}

bool ChartImage::labelWithin(double left, double right) const {
    return std::any_of(marks_.begin(), marks_.end(), [&](const PlacedMark &mark) {
        return !mark.box.isEmpty() && mark.box.left() <= right && mark.box.right() >= left;
    });
}

QRect ChartImage::regionOfNews(const ChartData &data) const {
    if (drawnMarks_ != data.marks.size())
        return QRect(QPoint(), view_.size); // labels may move to make room for the new one
    if (drawnSamples_ == data.samples.size())
        return {};
    const auto [first, end] = columns_.columnsOfNews(drawnSamples_, data.samples.size());
    if (first >= end)
        return {};
    const auto [left, right] = placesOf(first, end);
    if (labelWithin(left, right))
        return QRect(QPoint(), view_.size); // it may move off the trace
    const double sign = leavesScale(data, drawnSamples_ - 1) ? OffScale::reach : 0;
    return QRectF(left - sign, layout_.plot.top(), right - left + 2 * sign, layout_.plot.height()).toAlignedRect();
}

bool ChartImage::leavesScale(const ChartData &data, qint64 from) const {
    const Extent extent = data.samples.extent(std::max<qint64>(from, 0), data.samples.size());
    const AxisValues &axes = view_.axes;
    return extent.uvMin() < axes.uvMin || extent.uvMax() > axes.uvMax || extent.condMin() < axes.condMin ||
           extent.condMax() > axes.condMax;
}

void ChartImage::paintAll() {
    const QSize pixels(qCeil(view_.size.width() * view_.pixelRatio), qCeil(view_.size.height() * view_.pixelRatio));
    if (image_.size() != pixels)
        image_ = QImage(pixels, QImage::Format_RGB32);
    image_.setDevicePixelRatio(view_.pixelRatio);
    image_.fill(view_.theme.ground);
    {
        QPainter painter(&image_);
        PlotPainter frame(painter, layout_, view_.theme);
        frame.frame();
        frame.key(UvTrace);
        frame.key(CondTrace);
    }
    raster_.setPlot(layout_.devicePlot(), view_.theme.uv.rgb(), view_.theme.cond.rgb());
    setGround();
    raster_.paintGround(image_);
    // Again: setGround marked columns to be rewritten, but the whole ground has just been painted.
    raster_.setPlot(layout_.devicePlot(), view_.theme.uv.rgb(), view_.theme.cond.rgb());
}

void ChartImage::moveTimeAxis() {
    QPainter painter(&image_);
    const QRectF plot = layout_.plot;
    const double line = layout_.lineWidth();
    const double labels = layout_.timeLabelTop;
    painter.fillRect(QRectF(plot.left() - line, plot.bottom(), plot.width() + 2 * line, labels - plot.bottom()),
                     view_.theme.ground);
    painter.fillRect(QRectF(0, labels, view_.size.width(), view_.size.height() - labels), view_.theme.ground);
    PlotPainter(painter, layout_, view_.theme).timeAxis();
    setGround();
}

void ChartImage::setGround() {
    const PlotTheme &theme = view_.theme;
    const QRect plot = layout_.devicePlot();
    const auto inPixels = [&](double place) { return qRound(place * view_.pixelRatio); };
    std::vector<QRgb> columns(static_cast<std::size_t>(plot.width()), theme.ground.rgb());
    for (const Tick &tick : layout_.timeTicks) {
        const int column = inPixels(tick.place) - plot.x();
        if (tick.major && column > 0 && column < plot.width())
            columns[column] = theme.grid.rgb();
    }
    std::vector<QRgb> rows(static_cast<std::size_t>(plot.height()), 0);
    const int zero = inPixels(layout_.uv.place(0)) - plot.y();
    for (const Tick &tick : layout_.uvTicks) {
        const int row = inPixels(tick.place) - plot.y();
        if (tick.major && row >= 0 && row < plot.height())
            rows[row] = row == zero ? theme.zeroLine.rgb() : theme.grid.rgb();
    }
    raster_.setGround(std::move(columns), std::move(rows));
}

void ChartImage::placeNewMarks(const ChartData &data) {
    marks_ = placeMarks(data.marks, layout_, view_.theme, columns_);
    drawnMarks_ = data.marks.size();
}

} // namespace ostrel
