// SPDX-License-Identifier: MIT
#include "documents/ClearAndClose.h"

#include "base/ErrorNumbers.h"
#include "base/Steps.h"
#include "documents/FileNames.h"

namespace ostrel {

namespace {

constexpr float emptyTimeAxis = 10;
constexpr double startWindow = 10;

} // namespace

ClearAndClose::ClearAndClose(TabStates &tabs, RunState &run, const DocumentCharts &charts, DocumentWindow &window,
                             Prompts &prompts, ErrorRoute &errors, SaveFiles &save)
    : tabs_(tabs), run_(run), charts_(charts), window_(window), prompts_(prompts), errors_(errors), save_(save) {}

void ClearAndClose::mnuClear_Click() {
    const bool recordedBefore = run_.Recording;
    if (!tabs_.ChartSaved[recorderChart]) {
        const BoxAnswer answer = askToSave(
            QStringLiteral("The Chart Recorder Data is NOT saved.  Save the data before clearing the Chart ?"));
        if (answer == BoxAnswer::Cancel)
            return;
        if (answer == BoxAnswer::Yes) {
            save_.mnuSaveData_Click();
            if (tabs_.ChartFileName[recorderChart].isEmpty())
                return;
        }
        if (run_.Recording && !recordedBefore)
            return; // a recording has begun while the question was open; its samples are in this chart
        tabs_.ChartSaved[recorderChart] = !run_.Recording;
    }
    run_.BesideLog = false;
    RunDocument &recorder = *charts_[recorderChart];
    recorder.setChartTitle(QStringLiteral("Chart Recorder"));
    recorder.ClearData();
    recorder.ClearDisplay();
    window_.setChartTime(QStringLiteral("10"));
    tabs_.ChartFileName[recorderChart].clear();
}

void ClearAndClose::mnuClose_Click() {
    trapped([this] { closeTab(tabs_.CurrentChart); },
            [this](const RunTimeError &error) { errors_.HandelError(error.number()); });
}

void ClearAndClose::closeTab(int c) {
    if (c == recorderChart)
        return;
    if (!tabs_.ChartSaved[c]) {
        const BoxAnswer answer =
            askToSave(QStringLiteral("The Data is NOT saved.  Save the data before closing the Chart ?"));
        if (answer == BoxAnswer::Cancel)
            return;
        if (answer == BoxAnswer::Yes)
            save_.mnuSaveData_Click();
        tabs_.ChartSaved[c] = true; // also when the save failed; the operator has seen the error
    }
    for (int i = c; i <= tabs_.ChartCount - 2; ++i) {
        if (!takeOverNextTab(i)) {
            errors_.HandelError(ErrorNumber::CloseFailed);
            if (i > c)
                window_.selectTab(c); // it stays in front, and shows another run now
            return;
        }
    }
    emptyLastTab();
    window_.selectTab(recorderChart);
}

bool ClearAndClose::takeOverNextTab(int i) {
    window_.takeScrollRange(i, i + 1);
    tabs_.ChartFileName[i] = tabs_.ChartFileName[i + 1];
    tabs_.ChartSaved[i] = tabs_.ChartSaved[i + 1];
    const bool ok = charts_[i]->LoadDataFile(tabs_.ChartFileName[i]);
    charts_[i]->SetNotes(charts_[i + 1]->GetNotes());
    charts_[i]->setChartTitle(charts_[i + 1]->ChartTitle());
    window_.takeTabHead(i, i + 1);
    return ok;
}

void ClearAndClose::emptyLastTab() {
    window_.setTabHead(tabs_.ChartCount - 1, QLatin1String(emptyTab), {});
    tabs_.ChartCount -= 1;
    const int n = tabs_.ChartCount;
    charts_[n]->ClearData();
    charts_[n]->setTimeAxisMax(emptyTimeAxis);
    tabs_.WindowMinutes[n] = startWindow;
    tabs_.FullView[n] = true;
    window_.resetScroll(n);
    charts_[n]->ClearDisplay();
}

BoxAnswer ClearAndClose::askToSave(const QString &text) {
    prompts_.beep();
    return prompts_.show({text, BoxIcon::None, QStringLiteral("Data Not Saved!"), BoxButtons::YesNoCancel});
}

} // namespace ostrel
