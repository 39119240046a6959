// SPDX-License-Identifier: MIT
#include "acquisition/SampleIntake.h"

#include "base/ErrorNumbers.h"
#include "base/Numbers.h"

namespace ostrel {

namespace {

constexpr double minutesPerSample = 0.0033333333333333335;

struct LabelLook {
    Label label;
    const char *text; ///< empty: the event number
    qint32 color;     ///< 0xBBGGRR
    qint16 height;
};

// clang-format off
constexpr LabelLook labelLooks[] = {
    // label          text  colour    height
    {Label::Start,    "S",  0xFFFF00,  50},
    {Label::End,      "E",  0xFFFF00,  40},
    {Label::Number,   "",   0x00FF00,  10},
    {Label::Pause,    "P",  0xFFFF00,  30},
    {Label::Hold,     "H",  0xFFFF00,  20},
    {Label::Continue, "C",  0xFFFF00,  20},
    {Label::M,        "M",  0xFFFF00,  60},
    {Label::F,        "F",  0x0000FF, -10},
};
// clang-format on

} // namespace

SampleIntake::SampleIntake(RunState &run, TabStates &tabs, Run &recorder, Run &log, Timer &TimerStopWaitForMethod,
                           const Commands &commands, ErrorRoute &errors, Notices &notices, const Options &options,
                           const Clock &clock)
    : run_(run), tabs_(tabs), recorder_(recorder), log_(log), TimerStopWaitForMethod_(TimerStopWaitForMethod),
      commands_(commands), errors_(errors), notices_(notices), options_(options), clock_(clock) {}

void SampleIntake::takeMethod(const QString &text) {
    if (run_.Recording || run_.WaitForMethod || run_.ChartPaused) {
        if (recorder_.AddMethodText(datedMethod(text), recorder_.GetLastTime()) != 0)
            errors_.HandelError(ErrorNumber::ChartFull);
        tabs_.ChartSaved[recorderChart] = false; // the text comes after the run, which may have been saved
        run_.BesideLog |= !options_.DataLogging;
        TimerStopWaitForMethod_Timer();
    }
    if (options_.DataLogging && log_.AddMethodText(datedMethod(text), run_.LogTime) != 0)
        errors_.HandelError(ErrorNumber::ChartFull);
}

QString SampleIntake::datedMethod(const QString &text) const {
    const QString lineEnd = QStringLiteral("\r\n");
    return generalDate(clock_.now()) + lineEnd + text + lineEnd;
}

void SampleIntake::TimerStopWaitForMethod_Timer() {
    TimerStopWaitForMethod_.setEnabled(false);
    run_.WaitForMethod = false;
}

void SampleIntake::AddChartSample() {
    if (!run_.Recording || run_.ChartPaused) {
        keepChartLabel();
        return;
    }
    run_.BesideLog |= !options_.DataLogging || run_.LogPaused;
    if (recorder_.AddSample(run_.UvValue, run_.CondValue) > 0)
        errors_.HandelError(ErrorNumber::ChartFull);
    // Not only at Record: a label that came in the place of the start label leaves that command out.
    tabs_.ChartSaved[recorderChart] = false;
    applyChartLabel();
    AddLabel(run_.ChartLabelType, false);
    if (run_.ChartEndPending) {
        run_.ChartPausePending = false;
        run_.ChartEndPending = false;
        run_.ChartLabelType = Label::End;
    }
    if (run_.ChartPausePending) {
        run_.ChartPausePending = false;
        run_.ChartLabelType = Label::Pause;
    }
}

/// Applies the waiting label when the recorder's chart has got a sample.
void SampleIntake::applyChartLabel() {
    switch (run_.ChartLabelType) {
    case Label::Start:
        commands_.run(QStringLiteral("mnuStart"));
        run_.ChartRunActive = true;
        run_.ChartPaused = false;
        break;
    case Label::End:
        run_.ChartPausePending = false;
        run_.ChartEndPending = false;
        run_.WaitForMethod = true;
        TimerStopWaitForMethod_.startAnew(); // the wait for the method of the run before may be on
        commands_.run(QStringLiteral("mnuStop"));
        run_.ChartRunActive = false;
        run_.ChartPaused = false;
        run_.ChartEventNumber = 0;
        tellEnd(QStringLiteral("The run has ended"));
        break;
    case Label::Number:
        ++run_.ChartEventNumber;
        break;
    case Label::Pause:
        run_.ChartPausePending = false;
        if (run_.ChartRunActive)
            run_.ChartPaused = true;
        else
            run_.ChartLabelType = Label::None; // a pause outside a run leaves no label
        break;
    default:
        break;
    }
}

void SampleIntake::tellEnd(const QString &title) {
    constexpr int decimals = 1;
    const QString recorded = QString::number(double(recorder_.GetLastTime()), 'f', decimals);
    notices_.show(News::RunEnded, title, QStringLiteral("The chart holds %1 minutes.").arg(recorded));
}

/// Handles the label while the recorder's chart takes no samples. A label that is not drawn keeps waiting.
void SampleIntake::keepChartLabel() {
    switch (run_.ChartLabelType) {
    case Label::Start:
        run_.ChartRunActive = true;
        break;
    case Label::End:
        // The end of a paused run ends the pause; the session stays on.
        run_.ChartRunActive = false;
        if (run_.ChartPaused) {
            AddLabel(run_.ChartLabelType, false);
            run_.ChartPaused = false;
            tellEnd(QStringLiteral("The run has ended in a pause"));
        }
        break;
    case Label::Number:
        if (run_.ChartPaused) {
            ++run_.ChartEventNumber;
            AddLabel(run_.ChartLabelType, false);
        }
        break;
    default:
        break;
    }
}

void SampleIntake::AddLogSample() {
    if (!options_.DataLogging) {
        if (run_.LogLabelType == Label::Start)
            run_.LogRunActive = true;
        else if (run_.LogLabelType == Label::End)
            run_.LogRunActive = false;
        return;
    }
    if (run_.LogPaused)
        return;
    if (log_.AddSample(run_.UvValue, run_.CondValue) > 0)
        errors_.HandelError(ErrorNumber::ChartFull);
    applyLogLabel();
    AddLabel(run_.LogLabelType, true); // at the time of the previous sample
    if (run_.LogEndPending) {
        run_.LogPausePending = false;
        run_.LogEndPending = false;
        run_.LogLabelType = Label::End;
    }
    if (run_.LogPausePending) {
        run_.LogPausePending = false;
        run_.LogLabelType = Label::Pause;
    }
    run_.LogTime = static_cast<float>(run_.LogSampleCount * minutesPerSample);
    ++run_.LogSampleCount;
}

void SampleIntake::applyLogLabel() {
    switch (run_.LogLabelType) {
    case Label::Start:
        run_.LogRunActive = true;
        run_.LogPaused = false;
        break;
    case Label::End:
        run_.LogPausePending = false;
        run_.LogEndPending = false;
        run_.LogRunActive = false;
        run_.LogPaused = false;
        run_.LogEventNumber = 0;
        break;
    case Label::Number:
        ++run_.LogEventNumber;
        break;
    case Label::Pause:
        run_.LogPausePending = false;
        if (run_.LogRunActive)
            run_.LogPaused = true;
        else
            run_.LogLabelType = Label::None;
        break;
    default:
        break;
    }
}

void SampleIntake::AddLabel(Label &LabelType, bool Log) {
    if (LabelType == Label::None)
        return;
    const LabelLook &look = labelLooks[static_cast<int>(LabelType) - 1];
    const int number = Log ? run_.LogEventNumber : run_.ChartEventNumber;
    const QString text = LabelType == Label::Number ? QString::number(number) : QString::fromLatin1(look.text);
    const qint16 status = Log ? log_.AddEventMark(text, look.color, look.height, run_.LogTime)
                              : recorder_.AddEventMark(text, look.color, look.height, recorder_.GetLastTime());
    if (status > 0)
        errors_.HandelError(ErrorNumber::ChartFull);
    LabelType = Label::None;
}

} // namespace ostrel
