// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "base/Commands.h"
#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "chart/run/Run.h"
#include "platform/Clock.h"
#include "platform/Notices.h"
#include "platform/Timer.h"

namespace ostrel {

/// Adds samples, labels and method texts to the two charts: to the recorder's while a session is on, to the log's while
/// logging is on. A waiting label is added with the next pair, so that every mark has the time of a sample.
class SampleIntake {
public:
    SampleIntake(RunState &run, TabStates &tabs, Run &recorder, Run &log, Timer &TimerStopWaitForMethod,
                 const Commands &commands, ErrorRoute &errors, Notices &notices, const Options &options,
                 const Clock &clock);

    /// Add the pair UvValue, CondValue to their chart, and the label that waits there. Raise overflow (6) when the
    /// number of a label leaves 16 bits.
    void AddChartSample();
    void AddLogSample();

    /// Takes the text of an "M" block. The recorder's chart gets it during a session, a pause or the wait after a run's
    /// end, the log's while logging is on.
    void takeMethod(const QString &text);
    /// Ends the wait for the method text of a run that has ended.
    void TimerStopWaitForMethod_Timer();

    /// Tells an operator who is elsewhere that the instrument has ended a run; `title` says how.
    void tellEnd(const QString &title);

private:
    void applyChartLabel();
    void keepChartLabel();
    void applyLogLabel();
    void AddLabel(Label &LabelType, bool Log);
    QString datedMethod(const QString &text) const;

    RunState &run_;
    TabStates &tabs_;
    Run &recorder_;
    Run &log_;
    Timer &TimerStopWaitForMethod_;
    const Commands &commands_;
    ErrorRoute &errors_;
    Notices &notices_;
    const Options &options_;
    const Clock &clock_;
};

} // namespace ostrel
