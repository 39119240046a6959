// SPDX-License-Identifier: MIT
#include "simulator/Detectors.h"

#include "acquisition/StreamFormat.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

constexpr double sampleSeconds = 1.0 / StreamFormat::samplesPerSecond;

double heightNow(const Peak &peak) {
    const bool leading = peak.time > 0;
    const double flank = peak.width * (leading ? 1 : peak.tail) / (1 + peak.tail);
    return peak.height * std::exp2(-(peak.time / flank) * (peak.time / flank));
}

bool isOver(const Peak &peak) { return -peak.time > 10 * peak.width; }

} // namespace

void Detectors::addPeak(const Peak &peak) { peaks_.push_back(peak); }

void Detectors::startGradient(double from, double to, double seconds) {
    gradientSteps_ = std::max(1, int(std::lround(seconds / sampleSeconds)));
    gradientStep_ = (to - from) / gradientSteps_;
    gradientEnd_ = to;
    cond.level = from;
}

void Detectors::setConductivity(double level) {
    gradientSteps_ = 0;
    cond.level = level;
}

void Detectors::advance(Flow flow) {
    if (flow == Flow::Stopped)
        return;
    uv.level += uv.driftPerMinute / 60 * sampleSeconds;
    cond.level += cond.driftPerMinute / 60 * sampleSeconds;
    for (Peak &peak : peaks_)
        peak.time -= sampleSeconds;
    std::erase_if(peaks_, isOver);
    if (flow == Flow::Running && gradientSteps_ > 0)
        cond.level = --gradientSteps_ > 0 ? cond.level + gradientStep_ : gradientEnd_;
}

Measurement Detectors::measure() {
    double absorbance = uv.level + noise(uv.noise);
    for (const Peak &peak : peaks_)
        absorbance += heightNow(peak);
    return {float(absorbance), float(cond.level + noise(cond.noise))};
}

unsigned char Detectors::randomByte() { return static_cast<unsigned char>(random_()); }

double Detectors::noise(double rms) { return rms > 0 ? rms * normal_(random_) : 0; }

} // namespace ostrel
