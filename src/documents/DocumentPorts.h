// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "chart/files/RunDocument.h"

#include <QString>

#include <array>

namespace ostrel {

/// What the documents need of the window above them.

/// The recorder's chart and those of the opened files, by their tabs.
using DocumentCharts = std::array<RunDocument *, tabCount>;

/// The main window as the commands on files see it. Tabs are counted as their charts are, the recorder's being 0.
class DocumentWindow {
public:
    virtual ~DocumentWindow() = default;

    /// Caption and tool tip are plain text, whatever characters a file name holds.
    virtual void setTabHead(int tab, const QString &caption, const QString &toolTip) = 0;
    /// Gives a tab the head of another.
    virtual void takeTabHead(int tab, int from) = 0;
    /// Brings a tab to the front as the operator's hand would.
    virtual void selectTab(int tab) = 0;

    virtual void setScrollMax(int tab, qint16 minutes) = 0;
    /// Gives a tab's scroll bar the end and the steps of another's.
    virtual void takeScrollRange(int tab, int from) = 0;
    /// Puts a tab's scroll bar to its beginning and out of use.
    virtual void resetScroll(int tab) = 0;

    /// Writes the entry of the time window.
    virtual void setChartTime(const QString &text) = 0;
    /// In twips, in the window's font.
    virtual float textWidth(const QString &text) const = 0;
};

/// The main window as the running log sees it.
class LogWindow {
public:
    virtual ~LogWindow() = default;

    /// The command that saves the log.
    virtual void enableSaveLog(bool on) = 0;
    virtual bool saveLogEnabled() const = 0;
    /// Presses the toolbar button that tells the state, which releases the other, and enables the other's command.
    virtual void showLogging(bool on) = 0;
};

} // namespace ostrel
