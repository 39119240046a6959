// SPDX-License-Identifier: MIT
#pragma once

#include "documents/DocumentPorts.h"
#include "view/ChartTabs.h"
#include "view/MainControls.h"

#include <functional>

/// The main window as the commands on files see it.
class MainDocumentWindow : public DocumentWindow {
public:
    /// `TextWidth` measures in twips, in the window's font.
    MainDocumentWindow(ChartTabs &tabs, const TimeControls &controls, std::function<float(const QString &)> TextWidth);

    void setTabHead(int tab, const QString &caption, const QString &toolTip) override;
    void takeTabHead(int tab, int from) override { tabs_.takeHead(tab, from); }
    void selectTab(int tab) override { tabs_.select(tab); }

    void setScrollMax(int tab, qint16 minutes) override { bar(tab).setMax(minutes); }
    void takeScrollRange(int tab, int from) override;
    void resetScroll(int tab) override;

    void setChartTime(const QString &text) override { controls_.txtChartTime->setText(text); }
    float textWidth(const QString &text) const override { return TextWidth_(text); }

private:
    ScrollEntry &bar(int tab) const { return *controls_.ScrollChart[tab]; }

    ChartTabs &tabs_;
    TimeControls controls_;
    std::function<float(const QString &)> TextWidth_;
};
