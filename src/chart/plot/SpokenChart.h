// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/HeadNumbers.h"
#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"

#include <QString>

namespace ostrel {

/// A chart in words, for screen readers.

/// "UV 0.0125 AU, conductivity 5.00 mS/cm, at 3.20 min, mark S"; empty without numbers.
QString spoken(const HeadNumbers &numbers);

/// Title, the three axes, the numbers in the head, and the marks that are shown, a line each.
QString spoken(const ChartData &data, const AxisValues &axes, const HeadNumbers &numbers);

} // namespace ostrel
