// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"

namespace ostrel {

/// Name and version of this program, as files and reports tell it.
inline QString programVersion() { return QLatin1String(AppTitle) + QStringLiteral(" " OSTREL_VERSION); }

} // namespace ostrel
