// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/ByteSink.h"
#include "simulator/LineSource.h"
#include "simulator/PseudoTerminal.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <optional>

class RunTimeError;

/// Sends a source's bytes at their times. Each sample time is counted from the start, so that late ticks do not add up.
class Transmitter {
public:
    struct Settings {
        QString link;     ///< symbolic link to the port, or empty
        double speed = 1; ///< times as fast as the instrument
        ByteSink record;  ///< gets every byte that the line took; may be empty
    };

    std::function<void(const QString &path)> plugged; ///< a port is there, also the new one after an unplugging
    std::function<void()> finished;
    std::function<void(const RunTimeError &)> failed; ///< nothing is sent any more

    Transmitter(LineSource &source, const Settings &settings);

    /// Makes the port and begins. Raises a run-time error.
    void start();

private:
    void sendWhatIsDue();
    bool sendTick();
    void setPlugged(bool plugged);
    qint64 dueTime() const;
    void send(const QByteArray &bytes);

    LineSource &source_;
    Settings settings_;
    std::optional<PseudoTerminal> port_;
    QTimer timer_;
    QElapsedTimer sinceStart_;
    qint64 ticksSent_ = 0;
};
