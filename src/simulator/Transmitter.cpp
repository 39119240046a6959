// SPDX-License-Identifier: MIT
#include "simulator/Transmitter.h"

#include "acquisition/StreamFormat.h"
#include "base/Steps.h"

#include <algorithm>

Transmitter::Transmitter(LineSource &source, const Settings &settings) : source_(source), settings_(settings) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { trapped([this] { sendWhatIsDue(); }, failed); });
}

void Transmitter::start() {
    setPlugged(true);
    sinceStart_.start();
    timer_.start(0);
}

void Transmitter::sendWhatIsDue() {
    while (dueTime() <= sinceStart_.elapsed()) {
        if (!sendTick())
            return finished();
    }
    timer_.start(int(dueTime() - sinceStart_.elapsed()));
}

bool Transmitter::sendTick() {
    const std::optional<LineTick> tick = source_.next();
    if (!tick)
        return false;
    ++ticksSent_;
    setPlugged(tick->plugged);
    if (port_)
        send(tick->bytes);
    return true;
}

void Transmitter::setPlugged(bool isPlugged) {
    if (isPlugged == port_.has_value())
        return;
    if (isPlugged)
        plugged(port_.emplace(settings_.link).path());
    else
        port_.reset();
}

qint64 Transmitter::dueTime() const {
    return qint64(double(ticksSent_) * 1000 / StreamFormat::samplesPerSecond / settings_.speed);
}

void Transmitter::send(const QByteArray &bytes) {
    const QByteArray taken = bytes.first(port_->send(bytes));
    if (settings_.record)
        settings_.record(taken);
}
