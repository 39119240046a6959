// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/Detectors.h"
#include "simulator/LineSource.h"
#include "simulator/RunScript.h"
#include "simulator/TruthRecord.h"

namespace ostrel {

/// Plays a script as an instrument of either kind would send it. An event is sent before the sample pair of the same
/// time. Blocks that need more than a sample time on the line delay the blocks behind them. The script pauses while
/// more than two million bytes wait for the line.
class Player : public LineSource {
public:
    struct Settings {
        InstrumentKind kind = InstrumentKind::Status;
        bool loops = false; ///< start again after the last statement
        unsigned seed = 1;
        TruthRecord *truth = nullptr; ///< the caller's
    };

    Player(RunScript script, const Settings &settings);

    std::optional<LineTick> next() override;

private:
    enum class Line { Sending, Silent, Unplugged };

    void performSteps();
    bool isCongested() const;
    void perform(const Step &step);
    void performOther(const Step &step);
    void sendNews(Action action);
    void spend(const Step &step, Line line);
    void sendPair();
    void sendGarbage(int count);

    RunScript script_;
    Settings settings_;
    Detectors detectors_;
    size_t position_ = 0;
    int ticksLeft_ = 0;
    qint64 ticksPlayed_ = 0;
    qint64 pairsSent_ = 0;
    Line state_ = Line::Sending;
    Flow flow_ = Flow::Running;
    char uvLetter_;
    QByteArray line_; // bytes waiting to be sent
};

} // namespace ostrel
