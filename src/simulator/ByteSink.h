// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <functional>

namespace ostrel {

/// Takes the bytes of a record of the play, for instance for a file. Raises a run-time error when it cannot write all.
using ByteSink = std::function<void(const QByteArray &bytes)>;

} // namespace ostrel
