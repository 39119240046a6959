// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// What the axes are called, with their units: in plots, in reports and at the head of tables.
inline QString uvAxisTitle() { return QStringLiteral("UV (AU)"); }
inline QString condAxisTitle() { return QStringLiteral("Conductivity (mS/cm)"); }
inline QString timeAxisTitle() { return QStringLiteral("Time (min)"); }

} // namespace ostrel
