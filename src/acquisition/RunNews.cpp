// SPDX-License-Identifier: MIT
#include "acquisition/RunNews.h"

#include "acquisition/StreamFormat.h"

namespace ostrel {

using namespace StreamFormat;

namespace {

/// The state in which the recorder takes a report; the log takes all of them.
enum class Asks { Recording, RecordingOrPaused };

struct LabelNews {
    BlockType block;
    std::uint8_t value;
    Asks recorderAsks;
    Label label;
};

/// What "R" 1 does to the recorder or the log.
enum class RunningNews { Start, Resume, Continue };

// clang-format off
constexpr LabelNews labelNews[] = {
    // block          value          the recorder takes it while  both sides then wait with
    {EventBlock,      LabelM,        Asks::Recording,             Label::M},
    {EventBlock,      NumberedEvent, Asks::RecordingOrPaused,     Label::Number},   // keeps a waiting End, see setLabel
    {HoldBlock,       HoldOn,        Asks::Recording,             Label::Hold},
    {HoldBlock,       ContinueRun,   Asks::Recording,             Label::Continue},
    {RunStatusBlock,  RunEnded,      Asks::RecordingOrPaused,     Label::End},
    {RunStatusBlock,  RunPaused,     Asks::Recording,             Label::Pause},
    {RunStatusBlock,  RunHold,       Asks::Recording,             Label::Hold},
};

constexpr RunningNews runningNews[2][2] = {
    // not paused            paused
    {RunningNews::Start,     RunningNews::Resume},   // no run
    {RunningNews::Continue,  RunningNews::Resume},   // in a run
};
// clang-format on

/// A number overwrites a waiting end label; the end is then restored after the number.
void setLabel(Label &waiting, bool &endPending, Label label) {
    if (label == Label::Number && waiting == Label::End)
        endPending = true;
    waiting = label;
}

} // namespace

RunNews::RunNews(RunState &run, const LinkState &link) : run_(run), link_(link) {}

bool RunNews::takeEvent(std::uint8_t value) {
    switch (value) {
    case StartOfRun:
        takeStart();
        return true;
    case EndOfRun:
        takeEnd();
        return true;
    default:
        return takeLabel(EventBlock, value);
    }
}

bool RunNews::takeHold(std::uint8_t value) { return takeLabel(HoldBlock, value); }

bool RunNews::takeRunStatus(std::uint8_t value) {
    if (value == Running) {
        takeRunning();
        return true;
    }
    if (value == RunEnded)
        run_.ChartRunActive = false;
    return takeLabel(RunStatusBlock, value);
}

bool RunNews::takeLabel(std::uint8_t block, std::uint8_t value) {
    for (const LabelNews &news : labelNews) {
        if (news.block != block || news.value != value)
            continue;
        if (run_.Recording || (news.recorderAsks == Asks::RecordingOrPaused && run_.ChartPaused))
            setLabel(run_.ChartLabelType, run_.ChartEndPending, news.label);
        setLabel(run_.LogLabelType, run_.LogEndPending, news.label);
        return true;
    }
    return false;
}

// The first start event only arms: the next UV block confirms or drops it. A second start event confirms it, too.
void RunNews::takeStart() {
    if (run_.RunStartArmed) {
        startChartRun();
        startLogRun();
    }
    run_.RunStartArmed = !run_.RunStartArmed;
}

void RunNews::takeEnd() {
    run_.ChartRunActive = false;
    if (run_.Recording)
        run_.ChartEndPending = true;
    run_.ChartPausePending = false;
    run_.ChartPaused = false;
    run_.LogEndPending = true;
    run_.LogPausePending = false;
}

void RunNews::takeRunning() {
    switch (runningNews[run_.ChartRunActive][run_.ChartPaused]) {
    case RunningNews::Start:
        startChartRun();
        break;
    case RunningNews::Resume:
        run_.ChartPaused = false;
        break;
    case RunningNews::Continue:
        if (run_.Recording)
            run_.ChartLabelType = Label::Continue;
        break;
    }
    switch (runningNews[run_.LogRunActive][run_.LogPaused]) {
    case RunningNews::Start:
        startLogRun();
        break;
    case RunningNews::Resume:
        run_.LogPaused = false;
        break;
    case RunningNews::Continue:
        run_.LogLabelType = Label::Continue;
        break;
    }
}

void RunNews::startChartRun() {
    run_.Recording = true;
    run_.ChartEventNumber = 0;
    run_.ChartLabelType = Label::Start;
}

void RunNews::startLogRun() {
    run_.LogEventNumber = 0;
    run_.LogLabelType = Label::Start;
}

void RunNews::takeUvLetter(std::uint8_t type) {
    if (run_.RunStartArmed) {
        run_.RunStartArmed = false;
        if (type != UvSample) {
            startChartRun();
            startLogRun();
        }
    }
    if (!link_.StatusBlocksSeen) {
        if (type == UvSample && run_.ChartRunActive && !run_.ChartPaused && run_.Recording)
            run_.ChartPausePending = true;
        if (type == UvSampleInRun)
            run_.ChartPaused = false;
    }
    TrackLogRunFromUv(type);
}

void RunNews::TrackLogRunFromUv(std::uint8_t type) {
    if (link_.StatusBlocksSeen)
        return;
    if (type == UvSample && run_.LogRunActive && !run_.LogPaused)
        run_.LogPausePending = true;
    if (type == UvSampleInRun)
        run_.LogPaused = false;
}

} // namespace ostrel
