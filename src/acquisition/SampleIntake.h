// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionPorts.h"
#include "base/Commands.h"
#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "chart/run/Run.h"
#include "platform/Clock.h"
#include "platform/Timer.h"

namespace ostrel {

/// Brings samples, labels and method texts to the two charts: to the recorder's while a session is on, to the log's
/// while logging is on. A waiting label is drawn with the sample that closes the next pair, so that every mark is
/// on a sample.
class SampleIntake {
public:
    SampleIntake(RunState &run, TabStates &tabs, Run &recorder, Run &log, Timer &TimerStopWaitForMethod,
                 const Commands &commands, ErrorRoute &errors, const Options &options, const Clock &clock);

    /// Add the pair UvValue, CondValue to their chart and work off what waits there. Overflow (6) when the numbers of
    /// the labels leave 16 bits.
    void AddChartSample();
    void AddLogSample();

    /// The text of an "M" block. Nobody takes it outside a session, a pause and the wait behind a run's end, except the
    /// log.
    void takeMethod(const QString &text);
    /// Ends the wait for the method text of a run that has ended.
    void TimerStopWaitForMethod_Timer();

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
    const Options &options_;
    const Clock &clock_;
};

} // namespace ostrel
