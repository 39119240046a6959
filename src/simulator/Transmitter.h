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

/// Sends a source's bytes at their times. Each sample time is counted from the start, so that late ticks do not add up.
/// After a standstill of the program or computer of more than two seconds it continues where it was.
///
/// Up to the instrument's own speed each tick is sent separately, and bytes that the line does not take are lost. Above
/// it, ticks are sent as a burst a second, followed by a pause in which the recorder decodes. The play waits for a slow
/// listener, but drops the burst when it has taken nothing for five seconds.
class Transmitter {
public:
    static constexpr double recorderFollows = 20; ///< the highest speed at which the recorder loses nothing

    struct Settings {
        double speed = 1; ///< times as fast as the instrument
        ByteSink record;  ///< gets every byte that the line has taken; may be empty
    };

    std::function<void()> finished;
    std::function<void(const RunTimeError &)> failed; ///< called when sending has ended with an error

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
    std::optional<LineTick> ahead_; // taken from the source, but not sent yet
    QByteArray waiting_;            // unsent bytes of the burst
    qint64 burstBegan_ = 0;
    qint64 lastSent_ = 0;
    qint64 lastTaken_ = 0; // last time a listener took bytes
};

} // namespace ostrel
