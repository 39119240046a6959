// SPDX-License-Identifier: MIT
#include "documents/SaveFiles.h"

#include "base/ErrorNumbers.h"
#include "base/HelpContexts.h"
#include "documents/FileNames.h"

namespace ostrel {

SaveFiles::SaveFiles(TabStates &tabs, const RunState &run, const DocumentCharts &charts, DocumentWindow &window,
                     CommonDialog &ComDlg, Prompts &prompts, ErrorRoute &errors)
    : tabs_(tabs), run_(run), charts_(charts), window_(window), ComDlg_(ComDlg), prompts_(prompts), errors_(errors) {}

void SaveFiles::mnuSaveData_Click() {
    if (fileName().isEmpty() || showsLog()) {
        mnuSaveDataAs_Click();
    } else {
        prompts_.setMousePointer(MousePointer::Hourglass);
        if (chart().SaveDataFile(fileName()))
            saved();
        else
            errors_.HandelError(ErrorNumber::SaveFailed);
    }
    prompts_.setMousePointer(MousePointer::Default);
}

void SaveFiles::mnuSaveDataAs_Click() {
    const QString path =
        askForFile(QStringLiteral("Save Data File As..."), showsLog() ? QString() : fileName(), HelpContext::SaveData);
    const QString title = ComDlg_.FileTitle;
    if (path.isEmpty())
        return;
    const QString titleBefore = chart().ChartTitle();
    chart().setChartTitle(StripExtension(title)); // the file has it too
    if (!chart().SaveDataFile(path)) {
        chart().setChartTitle(titleBefore);
        errors_.HandelError(ErrorNumber::SaveFailed);
        return;
    }
    if (tabs_.CurrentChart != recorderChart)
        nameTab(window_, tabs_.CurrentChart, title);
    saved();
    fileName() = path;
    chart().Redraw(); // with its new title
}

void SaveFiles::mnuSaveSlectedData_Click() {
    const QString path = askForFile(QStringLiteral("Save Selected Data As..."), {}, HelpContext::SaveSelected);
    if (!path.isEmpty() && !chart().SaveSelectedData(path))
        errors_.HandelError(ErrorNumber::SaveFailed);
}

void SaveFiles::saved() {
    tabs_.ChartSaved[tabs_.CurrentChart] = tabs_.CurrentChart != recorderChart || !run_.Recording;
}

bool SaveFiles::showsLog() const { return fileName().right(3).toUpper() == QLatin1String("CHL"); }

QString SaveFiles::askForFile(const QString &title, const QString &offered, int HelpContextID) {
    ComDlg_.Flags = CommonDialog::Saving;
    ComDlg_.DialogTitle = title;
    ComDlg_.HelpContextID = HelpContextID;
    ComDlg_.FileName = offered;
    ComDlg_.Filter = QLatin1String(dataFilter);
    ComDlg_.DefaultExt = QLatin1String(dataExtension);
    ComDlg_.ShowSave();
    return ComDlg_.FileName;
}

} // namespace ostrel
