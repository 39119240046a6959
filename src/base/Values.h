// SPDX-License-Identifier: MIT
#pragma once

#include "base/Int16.h"

#include <QString>
#include <QtGlobal>

#include <array>
#include <chrono>

namespace ostrel {

/// The values that the parts of the recorder share: plain structs, one for each owner, with bare members. Units: UV in
/// AU, conductivity in mS/cm, times in minutes.

/// The application's title: the caption of boxes, the name of the settings store.
inline constexpr char AppTitle[] = "Ostrel MS";

inline constexpr int tabCount = 5;      ///< the recorder's tab and four files
inline constexpr int recorderChart = 0; ///< Chart(0), the recorder: the operator watches and saves it
inline constexpr int logChart = 5;      ///< Chart(5), hidden, takes every sample while logging is on
inline constexpr int scratchChart = 6;  ///< Chart(6), hidden, only used to read logs and save them
inline constexpr int chartInstances = 7;

/// The link to the instrument.
struct LinkState {
    bool FirstSyncFound = false;           ///< the decoder is synchronised with the block stream
    bool StatusBlocksSeen = false;         ///< the instrument reports its state by "P", "R" or "F" blocks
    bool ComDataSeen = false;              ///< some event came from the serial control since the watchdog last looked
    bool DataBusy = false;                 ///< the receiver, the decoder or the link-lost handling is at work
    QString DebugText;                     ///< written with each entry of the error log; never cleared
    std::chrono::milliseconds LastPass{0}; ///< when the decoder last looked at the ring, by the clock's uptime
};

/// A label that waits for the next sample of a chart. The numbers are the instrument's.
enum class Label : qint16 { None = 0, Start = 1, End = 2, Number = 3, Pause = 4, Hold = 5, Continue = 6, M = 7, F = 8 };

/// The state of the run, for the recorder chart and, side by side, for the log chart.
struct RunState {
    bool Recording = false; ///< a recording session is on

    bool ChartRunActive = false;
    bool ChartPaused = false; ///< Chart(0) takes no samples
    bool ChartEndPending = false;
    bool ChartPausePending = false;
    Label ChartLabelType = Label::None;
    Int16 ChartEventNumber; ///< last number used on a numbered label of Chart(0)

    bool LogRunActive = false;
    bool LogPaused = false; ///< Chart(5) takes no samples
    bool LogEndPending = false;
    bool LogPausePending = false;
    Label LogLabelType = Label::None;
    Int16 LogEventNumber;
    float LogTime = 0;         ///< minutes; runs on across all runs
    qint32 LogSampleCount = 0; ///< samples added to the log chart
    bool BesideLog = false;    ///< Chart(0) holds samples or method texts that the log has not

    bool RunStartArmed = false; ///< a start event has come and the next UV block decides
    bool WaitForMethod = false; ///< the run has ended and its method text has not come yet

    float UvValue = 0;     ///< latest UV value, AU
    float CondValue = 0;   ///< latest conductivity value, mS/cm
    bool PairSeen = false; ///< both have come since the link was lost last
};

/// The axes and the time window of one tab.
struct ChartViewState {
    float UvMin = 0;
    float UvMax = 0;
    float CondMin = 0;
    float CondMax = 0;
    float TimeFrom = 0; ///< left end of the part that is shown
    float TimeSpan = 0; ///< the width shown now; while zoomed, the zoom's width
};

/// The contents of the tabs and how each shows them; the index is the chart's.
struct TabStates {
    Int16 CurrentChart;                          ///< the tab in front, 0 to 4
    Int16 ChartCount;                            ///< tabs in use, the recorder's included; 0 until the window is set up
    std::array<QString, tabCount> ChartFileName; ///< full path, empty for no file
    std::array<bool, tabCount> ChartSaved{true, true, true, true, true};
    std::array<ChartViewState, tabCount> ChartViews; ///< a copy of what each tab's chart holds
    std::array<double, tabCount> WindowMinutes{10, 10, 10, 10, 10};
    std::array<bool, tabCount> FullView{true, true, true, true, true};
    std::array<bool, tabCount> Zoomed{};
    bool ZoomUpdating = false; ///< the zoom of a chart is being copied

    ChartViewState &currentView() { return ChartViews[CurrentChart]; }
    const ChartViewState &currentView() const { return ChartViews[CurrentChart]; }
};

/// The options that are stored from one start to the next.
struct Options {
    Int16 ComPortNumber = 1;
    bool DataLogging = true;
    double DataFileSizeHours = 24;
    bool Notifications = true; ///< the desktop shows notices; changed by an edit of the store alone
};

/// Identifies this running copy.
struct Identity {
    QString SystemName = QStringLiteral("Default");
    Int16 InstanceNumber; ///< 0 until the copy is registered
    QString InstanceTag;  ///< decimal digits, the name of the copy's log directory
    QString StartDate;    ///< when the copy was started, as the list of left-over logs shows it
    QString StartTime;
    QString LogDirectory;      ///< with a separator at its end; during recovery a left-over log's, without one
    bool PrevInstance = false; ///< another copy was running when this one started
};

/// How the last saving of the running log went.
struct LogState {
    bool LogSaved = true; ///< false when it failed or the operator cancelled it
};

/// The run-time error that is being handled; error boxes quote it.
struct CurrentError {
    int number = 0;
    QString description;
};

struct Values {
    LinkState link;
    RunState run;
    TabStates tabs;
    Options options;
    Identity identity;
    LogState log;
    CurrentError error;
    QChar DecimalPoint = QLatin1Char('.');
};

} // namespace ostrel
