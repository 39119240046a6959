// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "forms/Controls.h"

#include <array>

namespace ostrel {

/// The bar under each tab's chart, which moves a time window along the run. Bars count whole minutes of 16 bits.
class ScrollBars {
public:
    explicit ScrollBars(const std::array<ScrollEntry *, tabCount> &bars) : bars_(bars) {}

    ScrollEntry &operator[](int tab) const { return *bars_[tab]; }

    /// Sets a bar to its state at the start of the program, for a run without data.
    void setUp(int tab) const;
    /// Sets range, steps and place for a run up to `lastTime` and a window of `span` minutes. A range or a place beyond
    /// 16 bits is left as it was.
    void fit(int tab, float lastTime, float span, qint32 Value) const;
    /// Sets the range and moves to the end of the data. For a run shorter than the window the range is negative: it
    /// ends below 0. Raises overflow (6) for a run beyond 16-bit minutes.
    void toEnd(int tab, float lastTime, double span) const;
    /// Gives a bar the range and the steps of another.
    void takeRange(int tab, int from) const;
    /// Moves a bar to its beginning and disables it.
    void reset(int tab) const;

private:
    std::array<ScrollEntry *, tabCount> bars_;
};

} // namespace ostrel
