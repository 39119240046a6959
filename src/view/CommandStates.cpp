// SPDX-License-Identifier: MIT
#include "view/CommandStates.h"

#include "view/PlainTip.h"

#include <utility>

namespace ostrel {

namespace {

enum State { F, T, o }; // disabled, enabled, left as it is

struct TabRow {
    const char *command;
    State idle, recording, file;
};

struct RecordRow {
    Moment moment;
    State states[5];
};

// clang-format off
constexpr TabRow tabCommands[] = {
    //                     recorder tab     file tab
    // command             idle  recording
    {"mnuClose",           F,    F,         T},
    {"mnuClear",           T,    F,         F},
    {"mnuSaveData",        T,    F,         T},
    {"mnuSaveDataAs",      T,    F,         T},
    {"mnuSaveSlectedData", T,    F,         T},
    {"mnuPrint",           T,    F,         T},
    {"mnuPrintSetup",      T,    F,         T},
    {"mnuExport",          T,    F,         T},
    {"cmdSave",            T,    F,         T},
    {"cmdPrint",           T,    F,         T},
    {"cmdClear",           T,    F,         T},
};

constexpr const char *recordCommands[] = {
                          "mnuStart", "cmdRecord", "mnuStop", "cmdStop", "mnuComPort"};
constexpr RecordRow recordRows[] = {
    {Moment::LinkLost,  {  F,          F,           F,         F,         o }},
    {Moment::SyncFound, {  T,          T,           o,         T,         o }},
    {Moment::Record,    {  F,          o,           T,         o,         F }},
    {Moment::Stop,      {  T,          o,           F,         o,         T }},
};
// clang-format on

} // namespace

CommandStates::CommandStates(const RunState &run, const TabStates &tabs, const TimeControls &time,
                             const ScrollBars &bars, Actions actions)
    : run_(run), tabs_(tabs), time_(time), bars_(bars), actions_(std::move(actions)) {}

void CommandStates::commandsAt(Moment moment) {
    if (moment == Moment::Record || moment == Moment::Stop)
        atRecordOrStop(moment);
    applyRecordRow(moment);
}

void CommandStates::atRecordOrStop(Moment moment) {
    press(moment == Moment::Record ? "cmdRecord" : "cmdStop");
    if (tabs_.CurrentChart != recorderChart)
        return;
    applyTabRows();
    if (moment == Moment::Record)
        bars_[recorderChart].setEnabled(false);
    else if (time_.optTimeAxis[1]->Value())
        bars_[recorderChart].setEnabled(true);
}

void CommandStates::applyTabRows() {
    for (const TabRow &row : tabCommands) {
        const State onRecorder = run_.Recording ? row.recording : row.idle;
        enable(row.command, (tabs_.CurrentChart != recorderChart ? row.file : onRecorder) == T);
    }
}

void CommandStates::applyRecordRow(Moment moment) {
    for (const RecordRow &row : recordRows) {
        if (row.moment != moment)
            continue;
        for (std::size_t i = 0; i < std::size(recordCommands); ++i) {
            if (row.states[i] != o)
                enable(recordCommands[i], row.states[i] == T);
        }
    }
}

void CommandStates::tabInFront(const QString &caption) {
    const bool isFile = tabs_.CurrentChart != recorderChart;
    applyTabRows();
    const QString data = isFile ? caption : QStringLiteral("Chart Recorder data");
    QAction *cmdClear = actions_(QStringLiteral("cmdClear"));
    cmdClear->setText(isFile ? QStringLiteral("Close") : QStringLiteral("Clear"));
    cmdClear->setToolTip(plainTip(cmdClear->text() + QLatin1Char(' ') + data));
    actions_(QStringLiteral("cmdSave"))->setToolTip(plainTip(QStringLiteral("Save ") + data));
}

void CommandStates::setLogMenus(bool DataLogging) {
    enable("mnuLogOn", !DataLogging);
    enable("mnuLogOff", DataLogging);
}

} // namespace ostrel
