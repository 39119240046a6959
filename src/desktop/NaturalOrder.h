// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace ostrel {

/// The order in which people read names: numbers within a text count as numbers, "ttyS2" before "ttyS10".
bool naturallyLess(QStringView left, QStringView right);

} // namespace ostrel
