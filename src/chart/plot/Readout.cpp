// SPDX-License-Identifier: MIT
#include "chart/plot/Readout.h"

#include <cmath>

namespace ostrel {

namespace {

constexpr double dotRadius = 3;
constexpr double nearby = 5; // pixels from a mark

} // namespace

Readout::Readout(const ChartData &data, const PlotLayout &layout, double x)
    : data_(data), layout_(layout), x_(layout.snapped(x)) {
    const double nearest = std::round(layout.time.value(x) * samplesPerMinute);
    if (nearest >= 0 && nearest < static_cast<double>(data.samples.size()))
        sample_ = data.samples.at(static_cast<qint64>(nearest));
}

HeadNumbers Readout::numbers() const {
    const int decimals = layout_.axes.timeMax - layout_.axes.timeMin < 5 ? 3 : 2;
    HeadNumbers numbers = HeadNumbers::of(layout_.time.value(x_), decimals, sample_);
    numbers.mark = labelNearby();
    return numbers;
}

QString Readout::labelNearby() const {
    const EventMark *nearest = nullptr;
    double least = nearby;
    for (const EventMark &mark : data_.marks) {
        const double distance = std::abs(layout_.time.place(mark.time) - x_);
        if (distance <= least && !mark.label.isEmpty()) {
            least = distance;
            nearest = &mark;
        }
    }
    return nearest != nullptr ? nearest->label : QString();
}

std::optional<double> Readout::dotOf(const Scale &scale, float value) const {
    const double place = scale.place(value);
    const bool seen = place >= layout_.plot.top() && place <= layout_.plot.bottom();
    return seen ? std::optional(place) : std::nullopt;
}

QRegion Readout::region() const {
    const QRectF plot = layout_.plot;
    const QRectF line(x_ - dotRadius - 2, plot.top() - dotRadius - 2, 2 * dotRadius + 4,
                      plot.height() + 2 * dotRadius + 4);
    return QRegion(line.toAlignedRect()) + layout_.headBox.toAlignedRect();
}

void Readout::paint(QPainter &painter, const PlotTheme &theme) const {
    painter.save();
    const QRectF plot = layout_.plot;
    painter.fillRect(QRectF(x_, plot.top(), layout_.hairWidth(), plot.height()), theme.axis);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto dot = [&](std::optional<double> place, const QColor &colour) {
        if (!place)
            return;
        painter.setPen(QPen(theme.ground, 1.5));
        painter.setBrush(colour);
        painter.drawEllipse(QPointF(x_ + 0.5 / layout_.pixelRatio, *place), dotRadius, dotRadius);
    };
    if (sample_) {
        dot(dotOf(layout_.cond, sample_->cond), theme.cond);
        dot(dotOf(layout_.uv, sample_->uv), theme.uv);
    }
    painter.restore();
}

} // namespace ostrel
