// SPDX-License-Identifier: MIT
#include "acquisition/Acquisition.h"

#include "base/Steps.h"

namespace ostrel {

namespace {

constexpr int bytesToRaise = 50; ///< at so many waiting bytes the port raises an event

} // namespace

Acquisition::Acquisition(const Uses &on)
    : receiver(on.ComPort, ring, on.values.link, *on.timers.Process, on.clock, on.errors),
      news(on.values.run, on.values.link),
      intake(on.values.run, on.values.tabs, on.recorder, on.log, *on.timers.StopWaitForMethod, on.commands, on.errors,
             on.notices, on.values.options, on.clock),
      decoder(ring, on.values.link, on.values.run, news, intake,
              {*on.timers.Process, *on.timers.CheckComData, *on.timers.SaveLog}, on.window, on.commands, on.errors,
              on.notices, on.values.options, on.clock),
      session(on.values.run, on.values.link, on.values.tabs, *on.timers.CheckComData, *on.timers.SaveLog, on.window,
              on.notices),
      recorderKeeper(on.recorder, {on.values.identity, on.ComPort, on.directory, on.clock}),
      logKeeper(on.log, {on.values.identity, on.ComPort, on.directory, on.clock}),
      setup(on.ComPort, on.CommTmp, *on.timers.CheckComData, on.values.options, on.values.link, on.directory,
            on.prompts),
      search(setup, on.ComPort, *on.timers.CheckComData, on.values.options, on.values.identity, on.dialog, on.prompts,
             on.commands, on.errors),
      ComPort_(on.ComPort), timers_(on.timers), recorder_(on.recorder), run_(on.values.run),
      options_(on.values.options), window_(on.window) {}

void Acquisition::bind(Commands &commands, const Guard &guard) {
    commands.bind(QStringLiteral("mnuStart"), [this] { session.mnuStart_Click(); });
    commands.bind(QStringLiteral("mnuStop"), [this] {
        session.mnuStop_Click();
        takeNotes(); // here, since a pass may stop and start the recording
    });
    commands.bind(QStringLiteral("mnuComPort"), [this] { search.mnuComPort_Click(); });

    ComPort_.setRThreshold(bytesToRaise);
    ComPort_.OnComm = guard("ComPort_OnComm", [this] { receiver.ComPort_OnComm(); });
    timers_.Process->Tick = guard("TimerProcess_Timer", [this] {
        const float before = recorder_.GetLastTime();
        EveryStep tick;
        tick.run([this] { decoder.TimerProcess_Timer(); });
        tick.run([this] { takeNotes(); });
        // Samples of the pass that ended the recording: the live view has not brought them into view.
        if (!run_.Recording && recorder_.GetLastTime() > before)
            tick.run([this] { window_.UpdateLiveView(); });
        else
            recorder_.DrawNewData();
        showNow();
        tick.raise();
    });
    timers_.CheckComData->Tick = guard("TimerCheckComData_Timer", [this] {
        ComPort_.lookAtLine(); // bytes that have just arrived show that the link is alive, too
        session.TimerCheckComData_Timer();
    });
    timers_.StopWaitForMethod->Tick =
        guard("TimerStopWaitForMethod_Timer", [this] { intake.TimerStopWaitForMethod_Timer(); });
}

/// Of where the samples come from that the charts have got.
void Acquisition::takeNotes() {
    recorderKeeper.look(run_.Recording && !run_.ChartPaused);
    logKeeper.look(options_.DataLogging && !run_.LogPaused);
}

void Acquisition::showNow() {
    if (run_.PairSeen)
        window_.showNow(run_.Recording ? std::optional(recorder_.GetLastTime()) : std::nullopt,
                        SamplePair{run_.UvValue, run_.CondValue});
}

} // namespace ostrel
