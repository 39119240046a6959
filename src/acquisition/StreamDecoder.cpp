// SPDX-License-Identifier: MIT
#include "acquisition/StreamDecoder.h"

#include "acquisition/StreamFormat.h"
#include "base/ErrorNumbers.h"
#include "base/Numbers.h"

#include <QScopeGuard>

#include <array>
#include <bit>
#include <utility>

namespace ostrel {

using namespace StreamFormat;

namespace {

constexpr int untilMethodEnd = -1;
constexpr int leastToSearch = 7; ///< bytes: a UV block and the sync byte behind it

} // namespace

/// How a complete block is recognised, and which function decodes it.
struct StreamDecoder::BlockRule {
    std::uint8_t letter;
    int bytesAsked; ///< bytes that must wait behind the type byte
    void (*decode)(StreamDecoder &decoder);
};

// "F" counts as complete with one byte behind the letter, though the block has four: the ring's count may fall below
// zero until the others arrive.
// clang-format off
constexpr StreamDecoder::BlockRule StreamDecoder::blockRules[] = {
    // letter         asked            decoder
    {CondSample,      4,               [](StreamDecoder &d) { d.HandelCondData(); }},
    {CondSampleD,     4,               [](StreamDecoder &d) { d.HandelCondData(); }},
    {EventBlock,      1,               [](StreamDecoder &d) { d.HandelEventData(); }},
    {FBlock,          1,               [](StreamDecoder &d) { d.HandelFBlockData(); }},
    {HoldBlock,       1,               [](StreamDecoder &d) { d.HandelHoldData(); }},
    {MethodBlock,     untilMethodEnd,  [](StreamDecoder &d) { d.HandelMethodData(); }},
    {PenStatusBlock,  1,               [](StreamDecoder &d) { d.HandelPenStatusData(0); }},
    {RunStatusBlock,  1,               [](StreamDecoder &d) { d.HandelRunStatusData(); }},
    {UvSample,        4,               [](StreamDecoder &d) { d.HandelUvData(UvSample); }},
    {UvSampleInRun,   4,               [](StreamDecoder &d) { d.HandelUvData(UvSampleInRun); }},
};
// clang-format on

inline const StreamDecoder::BlockRule *StreamDecoder::ruleFor(std::uint8_t type) {
    static constexpr auto rules = [] {
        std::array<const BlockRule *, 256> byLetter{};
        for (const BlockRule &rule : blockRules)
            byLetter[rule.letter] = &rule;
        return byLetter;
    }();
    return rules[type];
}

StreamDecoder::StreamDecoder(ReceiveRing &ring, LinkState &link, RunState &run, RunNews &news, SampleIntake &intake,
                             DecoderTimers timers, AcquisitionWindow &window, const Commands &commands,
                             ErrorRoute &errors, Notices &notices, const Options &options, const Clock &clock)
    : ring_(ring), link_(link), run_(run), news_(news), intake_(intake), timers_(timers), window_(window),
      commands_(commands), errors_(errors), notices_(notices), options_(options), clock_(clock) {}

void StreamDecoder::TimerProcess_Timer() {
    link_.LastPass = clock_.uptime();
    if (ring_.ByteCount() > 2)
        ProcessComData();
}

void StreamDecoder::ProcessComData() {
    EveryStep pass;
    {
        link_.DataBusy = true;
        timers_.TimerProcess.setEnabled(false);
        const auto done = qScopeGuard([this] {
            link_.DataBusy = false;
            timers_.TimerProcess.setEnabled(true);
        });
        ring_.rebase();
        if (!link_.FirstSyncFound)
            pass.run([this] { FindFirstSync(); });
        else
            decodeAll(pass);
    }
    if (run_.Recording)
        pass.run([this] { window_.UpdateLiveView(); });
    pass.raise();
}

// After a fault the search and the decoding go on at once. Otherwise, on a noisy line, each tick would only get to the
// next fault while the ring fills up.
void StreamDecoder::decodeAll(EveryStep &pass) {
    decodeWholeBlocks(pass);
    while (!link_.FirstSyncFound && ring_.LookByteCount() >= leastToSearch) {
        pass.run([this] { FindFirstSync(); });
        ring_.rebase();
        if (link_.FirstSyncFound)
            decodeWholeBlocks(pass);
    }
}

// An error of a decoder clears FirstSyncFound but does not end the pass: the blocks behind it are still good.
void StreamDecoder::decodeWholeBlocks(EveryStep &pass) {
    while (const BlockRule *rule = PeekDataBlock(pass)) {
        ring_.discard(2);
        pass.run([&] { rule->decode(*this); });
        ring_.rebase();
    }
    ring_.rebase();
}

void StreamDecoder::backToWork() {
    if (link_.DataBusy)
        return;
    if (!ring_.consistent()) {
        ring_.empty();
        link_.FirstSyncFound = false;
    }
    // The error may come from the timer's own tick. Those from elsewhere may keep coming, and must not put the pass
    // off.
    if (clock_.uptime() - link_.LastPass < std::chrono::milliseconds(timers_.TimerProcess.Interval()))
        timers_.TimerProcess.startAnew();
    else
        timers_.TimerProcess.setEnabled(true);
}

const StreamDecoder::BlockRule *StreamDecoder::PeekDataBlock(EveryStep &pass) {
    if (ring_.LookByteCount() < 3)
        return nullptr;
    if (const auto sync = ring_.GetLastBytes(); sync != SyncByte) {
        pass.run([&] {
            refuse("Sub PeekDataBlock; Sync Byte Expected; Actual Byte Received:", sync, ReceiveRing::AroundLook,
                   ErrorNumber::LostSync);
        });
        return nullptr;
    }
    const auto type = ring_.GetLastBytes();
    const BlockRule *rule = ruleFor(type);
    if (rule == nullptr) {
        pass.run([&] {
            refuse("Sub PeekDataBlock; Data Type Byte Expected; Actual Byte Received:", type, ReceiveRing::AroundLook,
                   ErrorNumber::UnknownType);
        });
        return nullptr;
    }
    const bool complete =
        rule->bytesAsked == untilMethodEnd ? peekMethodEnd() : ring_.LookByteCount() >= rule->bytesAsked;
    return complete ? rule : nullptr;
}

bool StreamDecoder::peekMethodEnd() {
    while (ring_.LookByteCount() > 0) {
        if (ring_.GetLastBytes() == SyncByte)
            return true;
    }
    return false;
}

void StreamDecoder::FindFirstSync() {
    while (ring_.LookByteCount() >= leastToSearch) {
        const int discarded = bytesToDiscard();
        if (discarded == 0) {
            syncFound();
            return;
        }
        ring_.discard(discarded);
    }
    // The rest may stay for long: it is reported once, not at every tick.
    if (std::exchange(notFoundAt_, ring_.received()) != ring_.received())
        errors_.HandelError(ErrorNumber::FirstSyncNotFound);
}

/// Peeks for a UV block with a sync byte behind it, which stays in the ring. Returns 0 if it is there, otherwise the
/// number of bytes looked at.
int StreamDecoder::bytesToDiscard() {
    if (ring_.GetLastBytes() != SyncByte)
        return 1;
    if (const auto type = ring_.GetLastBytes(); type != UvSample && type != UvSampleInRun)
        return 2;
    for (int i = 0; i < 4; ++i)
        ring_.GetLastBytes();
    return ring_.GetLastBytes() == SyncByte ? 0 : 7;
}

void StreamDecoder::syncFound() {
    run_.ChartRunActive = false;
    window_.setReceiveLed(true);
    timers_.TimerCheckComData.setEnabled(true);
    timers_.TimerSaveLog.setEnabled(options_.DataLogging);
    if (options_.DataLogging)
        run_.LogEventNumber = run_.ChartEventNumber;
    window_.commandsAt(Moment::SyncFound);
    notices_.withdraw(News::LinkLost);
    link_.FirstSyncFound = true;
}

void StreamDecoder::HandelCondData() {
    StoreSampleBytes();
    run_.CondValue = SampleBytes_;
    run_.PairSeen = true;
    EveryStep bothCharts; // the log gets the pair even when the recorder fails
    bothCharts.run([this] { intake_.AddChartSample(); });
    bothCharts.run([this] { intake_.AddLogSample(); });
    bothCharts.raise();
}

void StreamDecoder::HandelUvData(std::uint8_t type) {
    StoreSampleBytes();
    news_.takeUvLetter(type);
    run_.UvValue = SampleBytes_;
}

void StreamDecoder::HandelFBlockData() {
    ring_.discard(4);
    link_.StatusBlocksSeen = true;
}

void StreamDecoder::HandelEventData() {
    const auto event = ring_.TakeByte();
    if (!news_.takeEvent(event))
        parameterError("Sub HandelEventData; Event Byte Expected; Actual Byte Received:", event);
}

void StreamDecoder::HandelHoldData() {
    const auto hold = ring_.TakeByte();
    if (!news_.takeHold(hold))
        parameterError("Sub HandelHoldData; Hold Byte Expected; Actual Byte Received:", hold);
}

void StreamDecoder::HandelPenStatusData(int skip) {
    const auto pen = ring_.TakeByte();
    if (skip != 0)
        return;
    link_.StatusBlocksSeen = true;
    if (pen == PenOff) {
        const bool recorded = run_.Recording;
        commands_.run(QStringLiteral("mnuStop"));
        if (recorded)
            intake_.tellEnd(QStringLiteral("The instrument has stopped the recording"));
    } else if (pen == PenOn) {
        commands_.run(QStringLiteral("mnuStart"));
    } else {
        parameterError("Sub HandelPenStatusData; Pen Byte Expected; Actual Byte Received:", pen);
    }
}

void StreamDecoder::HandelRunStatusData() {
    const auto status = ring_.TakeByte();
    link_.StatusBlocksSeen = true;
    if (!news_.takeRunStatus(status))
        parameterError("Sub HandelRunStatusData; Run Byte Expected; Actual Byte Received:", status);
}

void StreamDecoder::HandelMethodData() {
    QString text;
    do {
        const auto byte = ring_.TakeByte();
        if (byte == SyncByte)
            break;
        text += QLatin1Char(static_cast<char>(byte));
    } while (ring_.ByteCount() != 0);
    intake_.takeMethod(text);
}

void StreamDecoder::StoreSampleBytes() { SampleBytes_ = std::bit_cast<float>(ring_.TakeWord()); }

void StreamDecoder::parameterError(const char *text, std::uint8_t byte) {
    refuse(text, byte, ReceiveRing::AroundTake, ErrorNumber::UnknownParameter);
}

void StreamDecoder::refuse(const char *text, std::uint8_t byte, ReceiveRing::Which which, qint32 ErrorCode) {
    link_.DebugText = QLatin1String(text) + leadingBlankNumber(byte);
    ring_.AddDebugBytes(which, link_.DebugText);
    errors_.HandelError(ErrorCode);
}

} // namespace ostrel
