// SPDX-License-Identifier: MIT
#include "chart/run/Provenance.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

namespace ostrel {

QDateTime Provenance::dateAt(double minutes) const {
    constexpr double msPerMinute = 60000;
    const auto next = std::find_if(stretches.begin(), stretches.end(),
                                   [&](const Stretch &stretch) { return stretch.from > minutes; });
    if (next == stretches.begin())
        return {};
    const Stretch &stretch = *std::prev(next);
    double ms = (minutes - stretch.from) * msPerMinute;
    for (const ClockStep &step : clockSteps) {
        if (step.minutes > stretch.from && step.minutes <= minutes)
            ms += step.seconds * 1000;
    }
    return stretch.begun.addMSecs(std::llround(ms));
}

Provenance Provenance::part(double from, double to) const {
    Provenance part = *this;
    part.identity = newIdentity();
    part.parent = Parent{identity, from, to};
    part.stretches.clear();
    for (const Stretch &stretch : stretches) {
        const double begin = std::max(stretch.from, from);
        const double end = std::min(stretch.to, to);
        if (begin <= end)
            part.stretches.push_back(
                {begin - from, end - from, dateAt(begin), end < stretch.to ? dateAt(end) : stretch.ended});
    }
    std::erase_if(part.clockSteps, [&](const ClockStep &step) { return !(from < step.minutes && step.minutes <= to); });
    for (ClockStep &step : part.clockSteps)
        step.minutes -= from;
    return part;
}

void Provenance::join(const Provenance &later, double minute) {
    Provenance moved = later;
    for (Stretch &stretch : moved.stretches) {
        stretch.from += minute;
        stretch.to += minute;
    }
    for (ClockStep &step : moved.clockSteps)
        step.minutes += minute;
    if (empty()) {
        *this = moved;
        return;
    }
    stretches.insert(stretches.end(), moved.stretches.begin(), moved.stretches.end());
    clockSteps.insert(clockSteps.end(), moved.clockSteps.begin(), moved.clockSteps.end());
}

QString Provenance::newIdentity() {
    constexpr int digits = 16;
    const auto half = [] {
        return QString::number(QRandomGenerator::system()->generate64(), 16).rightJustified(digits, QLatin1Char('0'));
    };
    return half() + half();
}

} // namespace ostrel
