// SPDX-License-Identifier: MIT
#include "chart/plot/HeadNumbers.h"

#include "chart/run/PlainLocale.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

constexpr double longest = 1000; // larger values than any instrument's have exponents

QString number(double value, int decimals) {
    const QLocale locale = plainLocale();
    const QString text = locale.toString(value, 'f', decimals);
    const bool isZero = std::none_of(text.begin(), text.end(), [](QChar c) { return c.digitValue() > 0; });
    return isZero ? locale.toString(0.0, 'f', decimals) : text; // no "-0.000"
}

QString valueText(const std::optional<float> &value, int decimals, const QString &unit) {
    if (!value || !std::isfinite(*value))
        return QStringLiteral("- ") + unit;
    const bool isLong = std::abs(*value) >= longest;
    return (isLong ? plainLocale().toString(*value, 'g', 3) : number(*value, decimals)) + QLatin1Char(' ') + unit;
}

} // namespace

HeadNumbers HeadNumbers::of(std::optional<double> minutes, int timeDecimals, const std::optional<SamplePair> &sample) {
    HeadNumbers numbers;
    if (minutes)
        numbers.time = number(*minutes, timeDecimals) + QStringLiteral(" min");
    numbers.uv = valueText(sample ? std::optional(sample->uv) : std::nullopt, 4, QStringLiteral("AU"));
    numbers.cond = valueText(sample ? std::optional(sample->cond) : std::nullopt, 2, QStringLiteral("mS/cm"));
    return numbers;
}

void HeadNumbers::paint(QPainter &painter, const PlotLayout &layout, const PlotTheme &theme) const {
    painter.setFont(live ? layout.titleFont : layout.font);
    const auto column = [&](HeadColumn place, const QString &text, const QColor &colour) {
        if (layout.headColumns[place].isEmpty())
            return;
        painter.setPen(colour);
        painter.drawText(layout.headColumns[place], Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text);
    };
    const bool together = layout.headColumns[MarkColumn].isEmpty() && !mark.isEmpty();
    column(MarkColumn, mark, theme.text);
    column(TimeColumn, together ? mark + QStringLiteral("  ") + time : time, theme.text);
    column(UvColumn, uv, theme.uv);
    column(CondColumn, cond, theme.cond);
}

} // namespace ostrel
