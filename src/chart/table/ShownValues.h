// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"

#include <QString>

namespace ostrel {

/// The number of samples that the time axis shows.
qint64 shownCount(const ChartData &data, const AxisValues &axes);

/// The samples that the time axis shows, for the clipboard: a heading, then a line each of minutes, AU and mS/cm
/// between tabs, with the locale's decimal sign; a value that is not finite is empty.
QString shownValues(const ChartData &data, const AxisValues &axes);

} // namespace ostrel
