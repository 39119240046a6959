// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstdint>
#include <initializer_list>

namespace ostrel {

/// The six ends of a chart's axes, in AU, mS/cm and minutes.
struct AxisValues {
    float uvMin = -0.2F;
    float uvMax = 2.0F;
    float condMin = 0.0F;
    float condMax = 500.0F;
    float timeMin = 0.0F;
    float timeMax = 10.0F;

    bool operator==(const AxisValues &) const = default;
};

/// A linear mapping from values to places: `from` is at `start`, `to` at `end`. An empty or reversed axis counts as a
/// very short one, so that nothing is divided by zero.
class Scale {
public:
    Scale() = default;
    Scale(double from, double to, double start, double end)
        : from_(from), start_(start), factor_((end - start) / (to > from ? to - from : shortest(from))) {}

    double place(double value) const { return start_ + (value - from_) * factor_; }
    double value(double place) const { return from_ + (place - start_) / factor_; }
    double from() const { return from_; }
    /// Places for one unit of value; negative where values rise against the places.
    double factor() const { return factor_; }

private:
    static double shortest(double from) { return std::fmax(1e-6, std::fabs(from) * 1e-6); }

    double from_ = 0;
    double start_ = 0;
    double factor_ = 1;
};

/// Ticks at every multiple of a step. Each value is computed from the tick's number, so that no error adds up along the
/// axis.
struct TickSteps {
    double step = 1;
    int parts = 5;    ///< into which smaller ticks divide it
    double unit = 1;  ///< that the labels count in
    int decimals = 0; ///< that the labels need to differ
    std::int64_t first = 0;
    std::int64_t last = -1;

    double value(std::int64_t number) const { return static_cast<double>(number) * step; }

    /// The ticks between `from` and `to` with the smallest step not below `least` that is 1, 2 or 5 times a power of
    /// ten; none for invalid arguments.
    static TickSteps between(double from, double to, double least) {
        if (!(least > 0) || !std::isfinite(from) || !std::isfinite(to) || !std::isfinite(least))
            return {};
        int exponent = static_cast<int>(std::floor(std::log10(least)));
        int digit = 10;
        for (const int candidate : {1, 2, 5, 10}) {
            if (candidate * std::pow(10.0, exponent) >= least * (1 - 1e-9)) {
                digit = candidate;
                break;
            }
        }
        if (digit == 10) {
            digit = 1;
            ++exponent;
        }
        TickSteps steps;
        steps.decimals = exponent < 0 ? -exponent : 0;
        steps.parts = digit == 2 ? 4 : 5;
        // Negative powers are divided by: 3 / 10 is the number that prints as 0.3, 3 * 0.1 is not.
        steps.step = exponent < 0 ? digit / std::pow(10.0, -exponent) : digit * std::pow(10.0, exponent);
        steps.count(from, to);
        return steps;
    }

    /// Numbers the ticks between `from` and `to`.
    void count(double from, double to) {
        const double slack = (to - from) * 1e-6;
        first = static_cast<std::int64_t>(std::ceil((from - slack) / step));
        last = static_cast<std::int64_t>(std::floor((to + slack) / step));
    }
};

} // namespace ostrel
