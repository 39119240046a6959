// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <functional>

namespace ostrel {

/// Where a record of the play goes, for instance into a file. Raises a run-time error when it cannot take all.
using ByteSink = std::function<void(const QByteArray &bytes)>;

} // namespace ostrel
