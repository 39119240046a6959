// SPDX-License-Identifier: MIT
#include "chart/plot/Readout.h"

#include <QFontMetricsF>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

constexpr double dotRadius = 3;
constexpr double padding = 6;

QString number(double value, int decimals) {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    const QString text = locale.toString(value, 'f', decimals);
    const bool isZero = std::none_of(text.begin(), text.end(), [](QChar c) { return c.digitValue() > 0; });
    return isZero ? locale.toString(0.0, 'f', decimals) : text; // no "-0.000"
}

QString valueText(bool known, float value, int decimals, const QString &unit) {
    const QString text = known && std::isfinite(value) ? number(value, decimals) : QStringLiteral("-");
    return text + QLatin1Char(' ') + unit;
}

} // namespace

Readout::Readout(const SampleStore &samples, const PlotLayout &layout, double x)
    : layout_(layout), x_(layout.snapped(x)) {
    const double nearest = std::round(layout.time.value(x) * samplesPerMinute);
    known_ = nearest >= 0 && nearest < static_cast<double>(samples.size());
    if (known_)
        sample_ = samples.at(static_cast<qint64>(nearest));
}

QString Readout::timeText() const {
    const int decimals = layout_.axes.timeMax - layout_.axes.timeMin < 5 ? 3 : 2;
    return number(layout_.time.value(x_), decimals) + QStringLiteral(" min");
}

QString Readout::uvText() const { return valueText(known_, sample_.uv, 4, QStringLiteral("AU")); }

QString Readout::condText() const { return valueText(known_, sample_.cond, 2, QStringLiteral("mS/cm")); }

std::optional<double> Readout::dotOf(const Scale &scale, float value) const {
    const double place = scale.place(value);
    const bool seen = known_ && place >= layout_.plot.top() && place <= layout_.plot.bottom();
    return seen ? std::optional(place) : std::nullopt;
}

double Readout::columnWidth(const QString &widest) const {
    return std::ceil(QFontMetricsF(layout_.font).horizontalAdvance(widest)) + 2 * padding;
}

QRectF Readout::plate() const {
    const double width = columnWidth(QStringLiteral("00000.000 min")) + columnWidth(QStringLiteral("-0.0000 AU")) +
                         columnWidth(QStringLiteral("000.00 mS/cm"));
    const double height = std::ceil(QFontMetricsF(layout_.font).height()) + 4;
    const QRectF plot = layout_.plot;
    const double left = x_ > plot.center().x() ? plot.left() + padding : plot.right() - padding - width;
    return QRectF(std::max(left, plot.left()), plot.top() + padding, std::min(width, plot.width()), height);
}

QRegion Readout::region() const {
    const QRectF plot = layout_.plot;
    const QRectF line(x_ - dotRadius - 2, plot.top() - dotRadius - 2, 2 * dotRadius + 4,
                      plot.height() + 2 * dotRadius + 4);
    return QRegion(line.toAlignedRect()) + plate().toAlignedRect().adjusted(-1, -1, 1, 1);
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
    dot(dotOf(layout_.cond, sample_.cond), theme.cond);
    dot(dotOf(layout_.uv, sample_.uv), theme.uv);

    QRectF box = plate();
    QColor plateColour = theme.ground;
    plateColour.setAlphaF(0.88F);
    painter.setPen(theme.grid);
    painter.setBrush(plateColour);
    painter.drawRoundedRect(box, 4, 4);
    painter.setFont(layout_.font);
    const auto column = [&](const QString &text, const QString &widest, const QColor &colour) {
        box.setWidth(columnWidth(widest));
        painter.setPen(colour);
        painter.drawText(box.adjusted(0, 0, -padding, 0), Qt::AlignRight | Qt::AlignVCenter, text);
        box.moveLeft(box.right());
    };
    column(timeText(), QStringLiteral("00000.000 min"), theme.text);
    column(uvText(), QStringLiteral("-0.0000 AU"), theme.uv);
    column(condText(), QStringLiteral("000.00 mS/cm"), theme.cond);
    painter.restore();
}

} // namespace ostrel
