// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/ByteSink.h"
#include "simulator/Detectors.h"
#include "simulator/RunScript.h"

namespace ostrel {

/// What the instrument meant, in order: a tab-separated row for each sample pair and for each piece of news or fault.
class TruthRecord {
public:
    /// Writes the heading.
    explicit TruthRecord(ByteSink sink);

    /// `seconds` from the start of the program's play; values also as the bits that were sent.
    void addSample(double seconds, qint64 number, char letter, const Measurement &pair);
    /// The statement as the script has it, a method with its text behind it.
    void addNews(double seconds, const Step &step);

private:
    void write(double seconds, const QByteArray &row);

    ByteSink sink_;
};

} // namespace ostrel
