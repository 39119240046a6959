// SPDX-License-Identifier: MIT
#include "view/ChartTabs.h"

#include "base/Numbers.h"

#include <QShortcut>
#include <QSignalBlocker>

#include <initializer_list>
#include <utility>

namespace ostrel {

ChartTabs::ChartTabs(TabStates &tabs, const Charts &charts, QTabBar &TabChart, const TimeControls &controls,
                     TimeAxis &time, CommandStates &commands, std::function<void(int)> bringToFront)
    : tabs_(tabs), charts_(charts), TabChart_(TabChart), controls_(controls), time_(time), commands_(commands),
      bringToFront_(std::move(bringToFront)) {}

void ChartTabs::attach() {
    QObject::connect(&TabChart_, &QTabBar::currentChanged, &TabChart_, [this] { TabChart_Click(); });
    const auto stepBy = [this](int tabs, const std::initializer_list<QKeySequence> &keys) {
        for (const QKeySequence &key : keys) {
            auto *shortcut = new QShortcut(key, TabChart_.window());
            QObject::connect(shortcut, &QShortcut::activated, &TabChart_, [this, tabs] {
                if (tabs_.ChartCount > 1)
                    select((tabs_.CurrentChart + tabs + tabs_.ChartCount) % tabs_.ChartCount);
            });
        }
    };
    stepBy(1, {Qt::CTRL | Qt::Key_Tab});
    stepBy(-1, {Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab});
}

void ChartTabs::select(int tab) {
    {
        const QSignalBlocker quiet(TabChart_);
        TabChart_.setCurrentIndex(tab);
    }
    TabChart_Click();
}

void ChartTabs::TabChart_Click() {
    const int tab = TabChart_.currentIndex();
    if (tab >= tabs_.ChartCount) {
        if (tab != tabs_.CurrentChart) // equal only before the window is set up, when no tab is in use
            select(tabs_.CurrentChart);
        return;
    }
    tabs_.CurrentChart = tab;
    commands_.tabInFront(caption(tab));
    bringToFront_(tab);
    charts_[tab]->Redraw();

    // The text of the window entry is applied below, when the time mode changes to a window.
    controls_.txtChartTime->setText(tabs_.Zoomed[tab] ? generalNumber(tabs_.ChartViews[tab].TimeSpan)
                                                      : generalNumber(tabs_.WindowMinutes[tab]));
    controls_.optTimeAxis[tabs_.FullView[tab] ? 0 : 1]->setValue(true);
    if (controls_.optTimeAxis[1]->Value())
        time_.EnableScrollBar();
    time_.ShowAxisState();
    // A file shows the stretch that it was saved with, and the recorder moves with the option of the tab in front.
    if (tabs_.FullView[tab] && !time_.showsWholeRun())
        time_.SetFullView();
}

// In a tab's text "&" marks an access key, so it is doubled here.
void ChartTabs::setHead(int tab, const QString &caption, const QString &toolTip) {
    TabChart_.setTabText(tab, QString(caption).replace(QStringLiteral("&"), QStringLiteral("&&")));
    TabChart_.setTabToolTip(tab, toolTip);
}

void ChartTabs::takeHead(int tab, int from) { setHead(tab, caption(from), TabChart_.tabToolTip(from)); }

QString ChartTabs::caption(int tab) const {
    return TabChart_.tabText(tab).replace(QStringLiteral("&&"), QStringLiteral("&"));
}

} // namespace ostrel
