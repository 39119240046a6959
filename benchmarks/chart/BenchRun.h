// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/ChartImage.h"

#include <array>
#include <cmath>
#include <random>

namespace ostrel {

/// The runs that the benchmarks draw: 40 minutes each with seven peaks and a salt gradient on a drifting, noisy
/// baseline, one after the other.
class BenchRun {
public:
    SamplePair next() {
        struct Peak {
            double minute, height, width;
        };
        static constexpr std::array<Peak, 7> peaks{
            {{4, .3, .3}, {8, 1.2, .4}, {11, .5, .35}, {15, 1.8, .6}, {21, .9, .8}, {26, .25, .5}, {33, 1.1, .9}}};
        const double minute = std::fmod(static_cast<double>(number_) / samplesPerMinute, 40);
        double uv = 0.01 + 0.02 * std::sin(static_cast<double>(number_) * 1e-5);
        for (const Peak &peak : peaks) {
            const double distance = (minute - peak.minute) / peak.width;
            if (std::abs(distance) < 6)
                uv += peak.height * std::exp(-distance * distance / 2);
        }
        const double cond = minute < 12 ? 20 : std::min(20 + (minute - 12) * 14, 350.0);
        ++number_;
        return {static_cast<float>(uv + noise()), static_cast<float>(cond + noise() * 400)};
    }

    static ChartData ofPairs(qint64 pairs) {
        BenchRun run;
        ChartData data;
        while (data.samples.size() < pairs)
            data.samples.append(run.next());
        return data;
    }

private:
    double noise() {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return (static_cast<double>(state_ >> 40) / static_cast<double>(1 << 24) - 0.5) * 0.002;
    }

    qint64 number_ = 0;
    quint64 state_ = 1;
};

inline ChartView benchView(const ChartData &data) {
    ChartView view{.size = {1280, 720},
                   .pixelRatio = 1,
                   .font = {},
                   .theme = PlotTheme::of(QPalette()),
                   .axes = {},
                   .title = QStringLiteral("Chart Recorder")};
    view.axes.timeMax = data.lastTime();
    return view;
}

} // namespace ostrel
