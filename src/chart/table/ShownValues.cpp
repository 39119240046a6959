// SPDX-License-Identifier: MIT
#include "chart/table/ShownValues.h"

#include "chart/run/PlainLocale.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ostrel {

namespace {

std::pair<qint64, qint64> shownSamples(const ChartData &data, const AxisValues &axes) {
    const auto number = [&](double minutes, double (*round)(double)) {
        const double sample = std::clamp(round(minutes * samplesPerMinute), 0.0, double(data.samples.size()));
        return static_cast<qint64>(sample);
    };
    constexpr double slack = 1e-3; // samples: an axis that ends on one shows it
    const qint64 first = number(axes.timeMin - slack / samplesPerMinute, [](double x) { return std::ceil(x); });
    const qint64 end = number(axes.timeMax + slack / samplesPerMinute, [](double x) { return std::floor(x) + 1; });
    return {first, std::max(first, end)};
}

} // namespace

qint64 shownCount(const ChartData &data, const AxisValues &axes) {
    const auto [first, end] = shownSamples(data, axes);
    return end - first;
}

QString shownValues(const ChartData &data, const AxisValues &axes) {
    const QLocale locale = plainLocale();
    const auto value = [&](float number) {
        return std::isfinite(number) ? locale.toString(number, 'g', 7) : QString();
    };
    QString text = QStringLiteral("Time (min)\tUV (AU)\tConductivity (mS/cm)\n");
    const auto [first, end] = shownSamples(data, axes);
    for (qint64 i = first; i < end; ++i) {
        const SamplePair sample = data.samples.at(i);
        text += locale.toString(ChartData::timeOf(i), 'f', 4) + u'\t' + value(sample.uv) + u'\t' + value(sample.cond) +
                u'\n';
    }
    return text;
}

} // namespace ostrel
