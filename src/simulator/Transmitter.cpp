// SPDX-License-Identifier: MIT
#include "simulator/Transmitter.h"

#include "acquisition/StreamFormat.h"
#include "base/Steps.h"

#include <algorithm>

namespace ostrel {

namespace {

// ms
constexpr qint64 tickTime = 1000 / StreamFormat::samplesPerSecond;
constexpr qint64 mostBehind = 2000;
constexpr qint64 burstEvery = 1000;
constexpr qint64 fastPause = 800;  // the recorder decodes 700 ms after the last byte
constexpr qint64 steadyPause = 50; // for late ticks: gives a listener time to read before the plug is pulled
constexpr qint64 retryAfter = 5;
constexpr qint64 listenerMayStop = 5000;

// Bytes: the buffer of a pseudo-terminal, and less than half of the recorder's ring.
constexpr qsizetype recorderTakes = 4000;
constexpr double bytesPerSpeed = recorderTakes / Transmitter::recorderFollows;

} // namespace

Transmitter::Transmitter(LineSource &source, Plug &plug, const Settings &settings)
    : source_(source), plug_(plug), settings_(settings) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { trapped([this] { goOn(); }, failed); });
}

void Transmitter::start() {
    sinceStart_.start();
    timer_.start(0);
}

void Transmitter::goOn() {
    if (waiting_.isEmpty()) {
        forgiveStandstill();
        if (!gather())
            return finished();
    }
    send();
    const qint64 wait = waiting_.isEmpty() ? nextBurst() - now() : retryAfter;
    timer_.start(int(std::max<qint64>(0, wait))); // a timer does not accept negative times
}

qint64 Transmitter::dueTime() const {
    return stoodStill_ + qint64(double(ticksTaken_) * double(tickTime) / settings_.speed);
}

qint64 Transmitter::nextBurst() const {
    return isFast() ? std::max(burstBegan_ + burstEvery, lastSent_ + fastPause)
                    : std::max(dueTime(), lastSent_ + steadyPause);
}

qsizetype Transmitter::longestBurst() const {
    return std::max(recorderTakes, qsizetype(bytesPerSpeed * settings_.speed));
}

void Transmitter::forgiveStandstill() { stoodStill_ += std::max<qint64>(0, now() - dueTime() - mostBehind); }

/// Takes the due ticks from the source, up to a full burst; false at the end of the source. A change of the plug and
/// the end of the play wait for the next burst, so that there is a pause before them.
bool Transmitter::gather() {
    burstBegan_ = now();
    for (bool first = true; dueTime() <= burstBegan_ && waiting_.size() < longestBurst(); first = false) {
        if (!ahead_)
            ahead_ = source_.next();
        const bool changes = !ahead_ || ahead_->plugged != plug_.isIn();
        if (changes && !first)
            return true;
        if (!ahead_)
            return false;
        plug_.set(ahead_->plugged);
        waiting_ += ahead_->bytes;
        ahead_.reset();
        ++ticksTaken_;
    }
    return true;
}

void Transmitter::send() {
    if (waiting_.isEmpty())
        return;
    const QByteArray taken = waiting_.first(plug_.send(waiting_));
    if (settings_.record)
        settings_.record(taken);
    waiting_.remove(0, taken.size());
    lastSent_ = now();
    if (!taken.isEmpty())
        lastTaken_ = lastSent_;
    const bool isAwaited = isFast() && plug_.isHeard() && lastSent_ - lastTaken_ < listenerMayStop;
    if (!isAwaited)
        waiting_.clear();
}

} // namespace ostrel
