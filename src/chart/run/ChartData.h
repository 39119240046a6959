// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Provenance.h"
#include "chart/run/SampleStore.h"

#include <QString>

#include <vector>

namespace ostrel {

/// A mark on the time axis: colour 0xBBGGRR, a negative height points the other way, time in minutes.
struct EventMark {
    QString label;
    qint32 color = 0;
    qint16 height = 0;
    float time = 0;
};

struct MethodText {
    QString text; ///< with CR LF line ends
    float time = 0;
};

/// All data of one run, without how it is shown.
struct ChartData {
    SampleStore samples;
    std::vector<EventMark> marks;
    std::vector<MethodText> methodTexts;
    QString notes;
    QString title;
    Provenance provenance;

    /// Minutes of a sample by its number; the first is at 0.
    static double timeOf(qint64 sample) { return static_cast<double>(sample) / samplesPerMinute; }
    /// Minutes of the last sample, 0 without any.
    float lastTime() const { return samples.size() == 0 ? 0.0F : static_cast<float>(timeOf(samples.size() - 1)); }
};

} // namespace ostrel
