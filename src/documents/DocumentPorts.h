// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "chart/files/RunDocument.h"

#include <QString>

#include <array>

namespace ostrel {

/// The interfaces through which the documents use the main window.

/// The recorder's chart and those of the opened files, by their tabs.
using DocumentCharts = std::array<RunDocument *, tabCount>;

/// The main window for the commands on files. Tabs have the numbers of their charts; the recorder's is 0.
class DocumentWindow {
public:
    virtual ~DocumentWindow() = default;

    /// Caption and tool tip are plain text, even if a file name contains markup.
    virtual void setTabHead(int tab, const QString &caption, const QString &toolTip) = 0;
    /// Gives a tab the caption and tool tip of another.
    virtual void takeTabHead(int tab, int from) = 0;
    /// Brings a tab to the front, as a click of the operator does.
    virtual void selectTab(int tab) = 0;

    virtual void setScrollMax(int tab, qint16 minutes) = 0;
    /// Gives a tab's scroll bar the maximum and the steps of another's.
    virtual void takeScrollRange(int tab, int from) = 0;
    /// Sets a tab's scroll bar to its beginning and disables it.
    virtual void resetScroll(int tab) = 0;

    /// Sets the text of the entry field for the time window.
    virtual void setChartTime(const QString &text) = 0;
    /// In twips, in the window's font.
    virtual float textWidth(const QString &text) const = 0;
};

/// The main window for the running log.
class LogWindow {
public:
    virtual ~LogWindow() = default;

    /// The command that saves the log.
    virtual void enableSaveLog(bool on) = 0;
    virtual bool saveLogEnabled() const = 0;
    /// Presses the toolbar button of the state, which releases the other button, and enables the other's command.
    virtual void showLogging(bool on) = 0;
};

} // namespace ostrel
