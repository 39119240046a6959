// SPDX-License-Identifier: MIT
#include "simulator/Player.h"

#include "acquisition/StreamFormat.h"
#include "simulator/InstrumentStream.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ostrel {

using namespace StreamFormat;

namespace {

// Eight data bits need ten bits on the line, with start and stop bit.
constexpr qsizetype bytesPerTick = baudRate / 10 / samplesPerSecond;

// More bytes than a single statement and the samples meanwhile; about 35 minutes on the line.
constexpr qsizetype mostWaiting = 2'000'000;

struct Block {
    char letter; // 0: this kind sends no block
    quint8 parameter;
};

constexpr Block none{0, 0};

struct NewsRow {
    Action action;
    Block status;
    Block letters;
    char uvLetter;            // from now on; 0: as before
    std::optional<Flow> flow; // from now on
};

// clang-format off
constexpr NewsRow newsRows[] = {
    // news              kind status                     kind letters                  UV sent as       flow
    {Action::Start,     {RunStatusBlock, Running},    {EventBlock, StartOfRun},    UvSampleInRun, Flow::Running},
    {Action::Pause,     {RunStatusBlock, RunPaused},  none,                        UvSample,      Flow::Stopped},
    {Action::Resume,    {RunStatusBlock, Running},    none,                        UvSampleInRun, Flow::Running},
    {Action::Hold,      {RunStatusBlock, RunHold},    {HoldBlock, HoldOn},         0,             Flow::Held},
    {Action::Continue,  {RunStatusBlock, Running},    {HoldBlock, ContinueRun},    0,             Flow::Running},
    {Action::End,       {RunStatusBlock, RunEnded},   {EventBlock, EndOfRun},      UvSample,      Flow::Running},
    {Action::Event,     {EventBlock, NumberedEvent},  {EventBlock, NumberedEvent}, 0,             {}},
    {Action::LabelM,    {EventBlock, LabelM},         {EventBlock, LabelM},        0,             {}},
    {Action::PenOn,     {PenStatusBlock, PenOn},      none,                        0,             {}},
    {Action::PenOff,    {PenStatusBlock, PenOff},     none,                        0,             {}},
};
// clang-format on

} // namespace

Player::Player(RunScript script, const Settings &settings)
    : script_(std::move(script)), settings_(settings), detectors_(settings.seed), uvLetter_(UvSample) {}

std::optional<LineTick> Player::next() {
    performSteps();
    if (ticksLeft_ > 0 && !isCongested()) {
        --ticksLeft_;
        if (state_ == Line::Sending)
            sendPair();
        detectors_.advance(flow_);
    } else if (line_.isEmpty()) {
        return std::nullopt;
    }
    ++ticksPlayed_;
    // Bytes that already wait are still sent before the plug is pulled.
    const LineTick tick{state_ != Line::Unplugged || !line_.isEmpty(),
                        line_.first(std::min(bytesPerTick, line_.size()))};
    line_.remove(0, tick.bytes.size());
    return tick;
}

void Player::performSteps() {
    while (ticksLeft_ == 0 && position_ < script_.steps.size() && !isCongested()) {
        perform(script_.steps[position_++]);
        if (position_ == script_.steps.size() && settings_.loops)
            position_ = 0;
    }
}

bool Player::isCongested() const { return line_.size() > mostWaiting; }

void Player::perform(const Step &step) {
    switch (step.action) {
    case Action::Wait:
        return spend(step, Line::Sending);
    case Action::Uv:
        detectors_.uv.level = step.value;
        return;
    case Action::Cond:
        return detectors_.setConductivity(step.value);
    case Action::NoiseUv:
        detectors_.uv.noise = step.value;
        return;
    case Action::NoiseCond:
        detectors_.cond.noise = step.value;
        return;
    case Action::DriftUv:
        detectors_.uv.driftPerMinute = step.value;
        return;
    case Action::DriftCond:
        detectors_.cond.driftPerMinute = step.value;
        return;
    case Action::Peak:
        return detectors_.addPeak({step.seconds, step.value, step.width, step.tail});
    case Action::Gradient:
        return detectors_.startGradient(step.from, step.value, step.seconds);
    default:
        performOther(step);
    }
}

/// Events and faults: the statements that the truth record contains.
void Player::performOther(const Step &step) {
    if (settings_.truth)
        settings_.truth->addNews(double(ticksPlayed_) / samplesPerSecond, step);
    switch (step.action) {
    case Action::Method:
        line_ += methodBlock(step.bytes);
        return;
    case Action::Silence:
        return spend(step, Line::Silent);
    case Action::Unplug:
        return spend(step, Line::Unplugged);
    case Action::Garbage:
        return sendGarbage(step.count);
    case Action::Half:
        line_ += brokenBlock(step.letter);
        return;
    case Action::Bad:
        line_ += parameterBlock(step.letter, quint8(step.count));
        return;
    case Action::Unknown:
        line_ += QByteArray{1, char(SyncByte)} + step.letter;
        return;
    case Action::Raw:
        line_ += step.bytes;
        return;
    default:
        sendNews(step.action);
    }
}

void Player::sendNews(Action action) {
    const auto *row = std::ranges::find(newsRows, action, &NewsRow::action);
    const Block &block = settings_.kind == InstrumentKind::Status ? row->status : row->letters;
    if (block.letter != 0)
        line_ += parameterBlock(block.letter, block.parameter);
    if (row->uvLetter != 0)
        uvLetter_ = row->uvLetter;
    flow_ = row->flow.value_or(flow_);
}

void Player::spend(const Step &step, Line line) {
    ticksLeft_ = int(std::lround(step.seconds * samplesPerSecond));
    state_ = line;
}

void Player::sendPair() {
    const Measurement pair = detectors_.measure();
    line_ += sampleBlock(uvLetter_, pair.uv) + sampleBlock(CondSample, pair.cond);
    // The status kind sends a status block each second as a sign of life.
    if (settings_.kind == InstrumentKind::Status && pairsSent_ % samplesPerSecond == 0)
        line_ += statusBlock();
    ++pairsSent_;
    if (settings_.truth)
        settings_.truth->addSample(double(ticksPlayed_) / samplesPerSecond, pairsSent_, uvLetter_, pair);
}

void Player::sendGarbage(int count) {
    while (count-- > 0)
        line_ += char(detectors_.randomByte());
}

} // namespace ostrel
