// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// The order in which people read names: numbers within a text count as numbers, "ttyS2" before "ttyS10".
bool naturallyLess(QStringView left, QStringView right);
