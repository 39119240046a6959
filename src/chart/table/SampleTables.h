// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "files/FileOperations.h"

#include <system_error>

namespace ostrel {

enum class Signal { Uv, Cond };

/// Every sample of a run as a plain table without a head: minutes with six decimals, a tab, the value. A value that is
/// not finite is NaN, as numerical programs read it. On an error (errno) the path has the old file or the whole new
/// one.
std::error_code exportXy(const QString &path, const ChartData &data, Signal signal,
                         FileOperations &operations = FileOperations::system());

/// Every sample of a run as a table with commas (RFC 4180, UTF-8): minutes with six decimals, UV, conductivity, the
/// labels of the marks. A cell without a finite value is empty. A mark behind the last sample has a row of its own.
std::error_code exportCsv(const QString &path, const ChartData &data,
                          FileOperations &operations = FileOperations::system());

} // namespace ostrel
