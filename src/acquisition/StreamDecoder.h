// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/RunNews.h"
#include "acquisition/SampleIntake.h"
#include "base/Commands.h"
#include "base/ErrorRoute.h"
#include "base/Steps.h"
#include "base/Values.h"
#include "platform/Clock.h"
#include "platform/Timer.h"

#include <cstdint>

namespace ostrel {

/// The timers that the decoder switches.
struct DecoderTimers {
    Timer &TimerProcess;
    Timer &TimerCheckComData;
    Timer &TimerSaveLog;
};

/// Takes whole blocks out of the ring and hands on what they tell. A block that is not yet whole stays where it is and
/// is looked at again at the next tick.
class StreamDecoder {
public:
    StreamDecoder(ReceiveRing &ring, LinkState &link, RunState &run, RunNews &news, SampleIntake &intake,
                  DecoderTimers timers, AcquisitionWindow &window, const Commands &commands, ErrorRoute &errors,
                  const Options &options, const Clock &clock);

    /// The program's main loop.
    void TimerProcess_Timer();
    /// One pass over the ring: finds synchronisation, or decodes every whole block. A run-time error of a command, a
    /// chart, a counter or the error log does not keep the blocks behind it waiting: the first one flies on when the
    /// pass is over.
    void ProcessComData();
    /// After an error that ended no pass: a ring whose counts cannot be trusted is emptied, and synchronisation begins
    /// anew. While a pass waits for the operator nothing is touched.
    void backToWork();

private:
    struct BlockRule;
    static const BlockRule blockRules[];
    static const BlockRule *ruleFor(std::uint8_t type);

    void decodeAll(EveryStep &pass);
    void decodeWholeBlocks(EveryStep &pass);
    /// Looks at the bytes at the take position, consuming nothing: the rule of a whole block, or null. Reports what
    /// is no block at all.
    const BlockRule *PeekDataBlock(EveryStep &pass);
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
    const Commands &commands_;
    ErrorRoute &errors_;
    const Options &options_;
    const Clock &clock_;
    std::uint64_t notFoundAt_ = 0; ///< bytes that the ring had received when a search last failed
    float SampleBytes_ = 0;
};

} // namespace ostrel
