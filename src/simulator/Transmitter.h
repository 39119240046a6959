// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/ByteSink.h"
#include "simulator/LineSource.h"
#include "simulator/Plug.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <optional>

namespace ostrel {

/// Sends a source's bytes at their times. Each sample time is counted from the start, so that late ticks do not add up;
/// but a program or computer that was stopped for longer than two seconds goes on where it was.
///
/// Up to the instrument's own speed each tick is sent by itself, and what the line does not take is lost. Above it,
/// ticks gather to a burst a second with a pause behind it, in which the recorder decodes. A listener that reads loses
/// none of it: the play waits for one that is slow, and gives up what one has not taken for five seconds.
class Transmitter {
public:
    static constexpr double recorderFollows = 20; ///< the highest speed at which the recorder takes all

    struct Settings {
        double speed = 1; ///< times as fast as the instrument
        ByteSink record;  ///< gets every byte that the line took; may be empty
    };

    std::function<void()> finished;
    std::function<void(const RunTimeError &)> failed; ///< nothing is sent any more

    Transmitter(LineSource &source, Plug &plug, const Settings &settings);

    void start();

private:
    bool isFast() const { return settings_.speed > 1; }
    qint64 now() const { return sinceStart_.elapsed(); }
    qint64 dueTime() const;
    qint64 nextBurst() const;
    qsizetype longestBurst() const;
    void goOn();
    void forgiveStandstill();
    bool gather();
    void send();

    LineSource &source_;
    Plug &plug_;
    Settings settings_;
    QTimer timer_;
    QElapsedTimer sinceStart_; // all times are ms since then
    qint64 stoodStill_ = 0;    // ms
    qint64 ticksTaken_ = 0;
    std::optional<LineTick> ahead_; // taken from the source, but not begun
    QByteArray waiting_;            // of the burst
    qint64 burstBegan_ = 0;
    qint64 lastSent_ = 0;
    qint64 lastTaken_ = 0; // by a listener
};

} // namespace ostrel
