// SPDX-License-Identifier: MIT
#pragma once

#include <random>
#include <vector>

namespace ostrel {

/// The signal of one detector without peaks and gradient.
struct Baseline {
    double level = 0;
    double driftPerMinute = 0;
    double noise = 0; ///< root mean square
};

/// A peak in UV, each flank half a Gaussian.
struct Peak {
    double time;   ///< of its maximum, seconds of flow from now
    double height; ///< AU
    double width;  ///< seconds, at half the height
    double tail;   ///< trailing part of the width divided by the leading part
};

/// The state of the pumps: a hold keeps the composition, a pause stops everything.
enum class Flow { Running, Held, Stopped };

/// The measured pair of one sample time, as the instrument sends it.
struct Measurement {
    float uv;   ///< AU
    float cond; ///< mS/cm
};

/// The instrument's two detectors behind a column. The same seed gives the same noise.
class Detectors {
public:
    explicit Detectors(unsigned seed) : random_(seed) {}

    Baseline uv;
    Baseline cond;

    void addPeak(const Peak &peak);
    /// Moves the conductivity from one level to another; a new gradient or level ends the current gradient.
    void startGradient(double from, double to, double seconds);
    void setConductivity(double level);

    /// Lets one sample time pass.
    void advance(Flow flow);
    Measurement measure();

    unsigned char randomByte();

private:
    double noise(double rms);

    std::mt19937 random_;
    std::normal_distribution<double> normal_;
    std::vector<Peak> peaks_; // their times count down to the maximum, then negative
    double gradientStep_ = 0;
    double gradientEnd_ = 0;
    int gradientSteps_ = 0;
};

} // namespace ostrel
