// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// The names of the axes with their units, for plots, reports and the headings of tables.
inline QString uvAxisTitle() { return QStringLiteral("UV (AU)"); }
inline QString condAxisTitle() { return QStringLiteral("Conductivity (mS/cm)"); }
inline QString timeAxisTitle() { return QStringLiteral("Time (min)"); }

} // namespace ostrel
