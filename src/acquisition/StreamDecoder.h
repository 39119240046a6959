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

/// Takes complete blocks out of the ring and passes on their contents. An incomplete block stays in the ring and is
/// checked again at the next tick.
class StreamDecoder {
public:
    StreamDecoder(ReceiveRing &ring, LinkState &link, RunState &run, RunNews &news, SampleIntake &intake,
                  DecoderTimers timers, AcquisitionWindow &window, const Commands &commands, ErrorRoute &errors,
                  Notices &notices, const Options &options, const Clock &clock);

    /// The program's main loop; runs at each tick of TimerProcess.
    void TimerProcess_Timer();
    /// One pass over the ring: finds synchronisation, or decodes all complete blocks. A run-time error of a command, a
    /// chart, a counter or the error log does not stop the pass; the first one is raised when the pass is over.
    void ProcessComData();
    /// Called after an unhandled error: empties a ring with inconsistent counts, so that synchronisation begins anew,
    /// and restarts TimerProcess. Does nothing while a pass waits for the operator.
    void backToWork();

private:
    struct BlockRule;
    static const BlockRule blockRules[];
    static const BlockRule *ruleFor(std::uint8_t type);

    void decodeAll(EveryStep &pass);
    void decodeWholeBlocks(EveryStep &pass);
    /// Peeks at the bytes at the take position. Returns the rule of a complete block, or null. Reports bytes that are
    /// not a block.
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
    Notices &notices_;
    const Options &options_;
    const Clock &clock_;
    std::uint64_t notFoundAt_ = 0; ///< bytes that the ring had received when a search last failed
    float SampleBytes_ = 0;
};

} // namespace ostrel
