// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/LineSource.h"

namespace ostrel {

/// A captured stream, sent at the pace of sample pairs that follow each other: 60 bytes a second.
class Replay : public LineSource {
public:
    explicit Replay(const QByteArray &stream) : stream_(stream) {}

    std::optional<LineTick> next() override;

private:
    QByteArray stream_;
    qsizetype sent_ = 0;
};

} // namespace ostrel
