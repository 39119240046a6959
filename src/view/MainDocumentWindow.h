// SPDX-License-Identifier: MIT
#pragma once

#include "documents/DocumentPorts.h"
#include "view/ChartTabs.h"
#include "view/ScrollBars.h"

#include <functional>
#include <utility>

namespace ostrel {

/// The main window as the commands on files see it.
class MainDocumentWindow : public DocumentWindow {
public:
    /// `TextWidth` measures in twips, in the window's font.
    MainDocumentWindow(ChartTabs &tabs, const ScrollBars &bars, TextEntry &txtChartTime,
                       std::function<float(const QString &)> TextWidth)
        : tabs_(tabs), bars_(bars), txtChartTime_(txtChartTime), TextWidth_(std::move(TextWidth)) {}

    void setTabHead(int tab, const QString &caption, const QString &toolTip) override {
        tabs_.setHead(tab, caption, toolTip);
    }
    void takeTabHead(int tab, int from) override { tabs_.takeHead(tab, from); }
    void selectTab(int tab) override { tabs_.select(tab); }

    void setScrollMax(int tab, qint16 minutes) override { bars_[tab].setMax(minutes); }
    void takeScrollRange(int tab, int from) override { bars_.takeRange(tab, from); }
    void resetScroll(int tab) override { bars_.reset(tab); }

    void setChartTime(const QString &text) override { txtChartTime_.setText(text); }
    float textWidth(const QString &text) const override { return TextWidth_(text); }

private:
    ChartTabs &tabs_;
    const ScrollBars &bars_;
    TextEntry &txtChartTime_;
    std::function<float(const QString &)> TextWidth_;
};

} // namespace ostrel
