// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionRig.h"
#include "base/Steps.h"
#include "fakes/AllocationProbe.h"
#include "fuzz/Scenario.h"

#include <algorithm>
#include <optional>

/// Plays arbitrary bytes as a scenario: each step's first byte says what happens on the line, on the clock or at the
/// operator's hand, the bytes behind it are what it needs. Whatever they are, the ring and the charts must hold
/// together; a scenario that breaks them throws std::logic_error.
class StreamScenario {
public:
    explicit StreamScenario(std::span<const std::uint8_t> bytes) : rest_(bytes) {
        rig_.ComPort.setRThreshold(50);
        rig_.whileOutOfMemory = rig_.window.whileNoData = [this] { playUnderDialog(); };
    }

    /// A run-time error ends the scenario, as it ends the program.
    void play() {
        const int error = errorNumberOf([this] {
            while (!rest_.empty()) {
                step();
                require(!rig_.link.DataBusy && rig_.TimerProcess.Enabled());
            }
        });
        require(error == 0 || error == ErrorNumber::Overflow);
        check();
    }

private:
    enum Act : std::uint8_t { Arrive, ArriveToo, Tick, LinkLost, Fault, Burst, Operator, Chart, acts };

    void act() {
        using namespace std::chrono_literals;
        switch (take() % acts) {
        case Arrive:
        case ArriveToo:
            return arrive(takeBytes(take()));
        case Tick:
            return rig_.clock.advance(700ms);
        case LinkLost:
            return rig_.clock.advance(10s);
        case Fault:
            return rig_.ComPort.raise(1001 + take() % 10);
        case Burst: {
            const int times = take() * 16;
            return arrive(takeBytes(16).repeated(times));
        }
        case Operator:
            return take() % 2 == 0 ? rig_.session.mnuStart_Click() : rig_.session.mnuStop_Click();
        case Chart:
            const int how = take();
            full_.reset();
            if ((how & 3) != 0)
                full_.emplace(std::size_t{100000});
            rig_.options.DataLogging = (how & 4) == 0;
        }
    }

    void step() {
        act();
        check();
    }

    /// Events go on under a dialog until the operator answers it.
    void playUnderDialog() {
        if (depth_ == 3)
            return;
        ++depth_;
        for (int steps = take() % 8; steps > 0 && !rest_.empty(); --steps)
            step();
        --depth_;
    }

    void arrive(const QByteArray &bytes) {
        arrived_ += bytes.size();
        rig_.ComPort.arrive(bytes);
    }

    void check() const {
        for (const int index : {rig_.ring.PutIndex(), rig_.ring.TakeIndex(), rig_.ring.LookIndex()})
            require(index >= 0 && index < ReceiveRing::size);
        require(rig_.ring.ByteCount() >= -3); // an "F" block runs up to three bytes ahead
        for (const Run *run : {&rig_.chart, &rig_.log}) {
            require(run->data().samples.size() * 6 <= arrived_ + 3);
            require(qsizetype(run->data().marks.size() + run->data().methodTexts.size()) * 3 <= arrived_ + 3);
        }
        require(rig_.log.data().samples.size() <= rig_.run.LogSampleCount);
    }

    std::uint8_t take() {
        const QByteArray byte = takeBytes(1);
        return byte.isEmpty() ? 0 : std::uint8_t(byte[0]);
    }
    QByteArray takeBytes(std::size_t count) {
        const auto taken = rest_.first(std::min(count, rest_.size()));
        rest_ = rest_.subspan(taken.size());
        return {reinterpret_cast<const char *>(taken.data()), qsizetype(taken.size())};
    }

    AcquisitionRig rig_;
    std::optional<AllocationProbe::OutOfMemory> full_; // no chart takes more than it has room for
    std::span<const std::uint8_t> rest_;
    qsizetype arrived_ = 0;
    int depth_ = 0;
};
