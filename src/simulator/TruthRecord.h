// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/ByteSink.h"
#include "simulator/Detectors.h"
#include "simulator/RunScript.h"

namespace ostrel {

/// The data that the simulator intended to send: a tab-separated row for each sample pair, event and fault, in order.
class TruthRecord {
public:
    /// Writes the heading.
    explicit TruthRecord(ByteSink sink);

    /// `seconds` from the start of the program's play; values also as the bits that were sent.
    void addSample(double seconds, qint64 number, char letter, const Measurement &pair);
    /// The statement as the script has it; for a method, its text too.
    void addNews(double seconds, const Step &step);

private:
    void write(double seconds, const QByteArray &row);

    ByteSink sink_;
};

} // namespace ostrel
