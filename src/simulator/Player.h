// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/Detectors.h"
#include "simulator/LineSource.h"
#include "simulator/RunScript.h"
#include "simulator/TruthRecord.h"

namespace ostrel {

/// Plays a script as an instrument of either kind would send it. An event comes before the sample pair that has its
/// time. What takes longer on the line than a sample time delays the blocks behind it. A script that goes on sending
/// more than the line carries pauses while two million bytes wait.
class Player : public LineSource {
public:
    struct Settings {
        InstrumentKind kind = InstrumentKind::Status;
        bool loops = false; ///< begin anew after the last statement
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
    QByteArray line_; // what waits to be sent
};

} // namespace ostrel
