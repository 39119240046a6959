// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/RunNews.h"
#include "acquisition/SampleIntake.h"
#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "platform/Timer.h"

#include <cstdint>

/// The timers that the decoder switches.
struct DecoderTimers {
    Timer &TimerProcess;
    Timer &TimerCheckComData;
    Timer &TimerSaveLog;
};

/// Takes whole blocks out of the ring and hands on what they tell. A block that is
/// not yet whole stays where it is and is looked at again at the next tick.
class StreamDecoder {
public:
    StreamDecoder(ReceiveRing &ring, LinkState &link, RunState &run, RunNews &news, SampleIntake &intake,
                  DecoderTimers timers, AcquisitionWindow &window, RecordCommands &commands, ErrorRoute &errors,
                  const Options &options);

    /// The program's main loop.
    void TimerProcess_Timer();
    /// One pass over the ring: finds synchronisation, or decodes every whole block. Run-time errors of the commands,
    /// the charts and the counters fly on.
    void ProcessComData();

private:
    struct BlockRule;
    static const BlockRule blockRules[];
    static const BlockRule *ruleFor(std::uint8_t type);

    void decodeWholeBlocks();
    /// Looks at what stands at the take position, consuming nothing: the rule of a whole block, or null. Reports what
    /// is no block at all.
    const BlockRule *PeekDataBlock();
    bool peekMethodEnd();
    void FindFirstSync();
    int bytesToDiscard();
    void syncFound();

    void HandelCondData();
    void HandelUvData(std::uint8_t type);
    void HandelFBlockData();
    void HandelEventData();
    void HandelHoldData();
    void HandelPenStatusData(int skip);
    void HandelRunStatusData();
    void HandelMethodData();

    /// Takes the four bytes of a sample, high byte first, into SampleBytes.
    void StoreSampleBytes();
    void refuse(const char *text, std::uint8_t byte, ReceiveRing::Which which, qint32 ErrorCode);
    void parameterError(const char *text, std::uint8_t byte);

    ReceiveRing &ring_;
    LinkState &link_;
    RunState &run_;
    RunNews &news_;
    SampleIntake &intake_;
    DecoderTimers timers_;
    AcquisitionWindow &window_;
    RecordCommands &commands_;
    ErrorRoute &errors_;
    const Options &options_;
    float SampleBytes_ = 0;
};
