// SPDX-License-Identifier: MIT
#include "view/MainDocumentWindow.h"

#include <utility>

MainDocumentWindow::MainDocumentWindow(ChartTabs &tabs, const TimeControls &controls,
                                       std::function<float(const QString &)> TextWidth)
    : tabs_(tabs), controls_(controls), TextWidth_(std::move(TextWidth)) {}

void MainDocumentWindow::setTabHead(int tab, const QString &caption, const QString &toolTip) {
    tabs_.setHead(tab, caption, toolTip);
}

void MainDocumentWindow::takeScrollRange(int tab, int from) {
    bar(tab).setMax(bar(from).Max());
    bar(tab).setSmallChange(bar(from).SmallChange());
    bar(tab).setLargeChange(bar(from).LargeChange());
}

void MainDocumentWindow::resetScroll(int tab) {
    bar(tab).setValue(0);
    bar(tab).setEnabled(false);
}
