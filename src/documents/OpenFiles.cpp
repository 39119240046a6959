// SPDX-License-Identifier: MIT
#include "documents/OpenFiles.h"

#include "base/HelpContexts.h"
#include "base/Numbers.h"
#include "base/Steps.h"
#include "documents/ChartViewOf.h"
#include "documents/FileNames.h"

#include <algorithm>

namespace ostrel {

namespace {

constexpr int mostFiles = 4;

}

OpenFiles::OpenFiles(TabStates &tabs, const DocumentCharts &charts, DocumentWindow &window, CommonDialog &ComDlg,
                     Prompts &prompts)
    : tabs_(tabs), charts_(charts), window_(window), ComDlg_(ComDlg), prompts_(prompts) {}

void OpenFiles::OpenChartFile(bool IsLog) {
    if (!hasRoom())
        return;
    ComDlg_.DialogTitle = IsLog ? QStringLiteral("Open Log File...") : QStringLiteral("Open Data File...");
    ComDlg_.Filter = QLatin1String(IsLog ? logFilter : dataFilter);
    ComDlg_.DefaultExt = QLatin1String(IsLog ? logExtension : dataExtension);
    ComDlg_.FileName.clear();
    ComDlg_.HelpContextID = HelpContext::Open;
    skippingErrors([&] { ComDlg_.ShowOpen(); },
                   [&] {
                       if (const QString FileName = ComDlg_.FileName; !FileName.isEmpty())
                           DrawChartLabel(FileName);
                   });
}

bool OpenFiles::openDropped(const QString &FileName) {
    if (!hasRoom())
        return false;
    DrawChartLabel(FileName);
    return true;
}

bool OpenFiles::hasRoom() {
    if (tabs_.ChartCount < tabCount)
        return true;
    prompts_.show({QStringLiteral("The maximum number of files which can be opened at one time is %1.  "
                                  "To open another file you must close a file which is already open first.")
                       .arg(mostFiles),
                   BoxIcon::Information, QStringLiteral("Open Data File Information!")});
    return false;
}

void OpenFiles::DrawChartLabel(const QString &FileName) {
    prompts_.setMousePointer(MousePointer::Hourglass);
    if (load(FileName)) {
        const int i = tabs_.ChartCount - 1;
        takeOver(i, FileName);
        const QString title = GetFileTitle(FileName);
        nameTab(window_, i, title);
        charts_[i]->setChartTitle(StripExtension(title));
        window_.selectTab(i);
    }
    prompts_.setMousePointer(MousePointer::Default);
}

bool OpenFiles::load(const QString &FileName) {
    const int i = tabs_.ChartCount;
    tabs_.ChartCount += 1; // the tab counts as used while the chart reads and shows its error box
    if (charts_[i]->LoadDataFile(FileName))
        return true;
    window_.setTabHead(i, QLatin1String(emptyTab), {});
    tabs_.ChartCount -= 1;
    return false;
}

void OpenFiles::takeOver(int tab, const QString &FileName) {
    const RunDocument &chart = *charts_[tab];
    const double window = tabs_.WindowMinutes[tab];
    tabs_.ChartFileName[tab] = FileName;
    tabs_.ChartSaved[tab] = true;
    tabs_.FullView[tab] = true;
    tabs_.Zoomed[tab] = false;
    tabs_.ChartViews[tab] = chartViewOf(chart, window);
    window_.setScrollMax(tab, std::max<qint16>(rounded16(chart.GetLastTime() + 0.5 - window), 0));
}

} // namespace ostrel
