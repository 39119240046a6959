// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

namespace ostrel {

/// The events on the line within one sample time, a fifth of a second.
struct LineTick {
    bool plugged = true; ///< false: the plug is out, and nothing can be sent
    QByteArray bytes;
};

/// The source of the line's bytes.
class LineSource {
public:
    virtual ~LineSource() = default;

    /// The next sample time, or nothing at the end.
    virtual std::optional<LineTick> next() = 0;
};

} // namespace ostrel
