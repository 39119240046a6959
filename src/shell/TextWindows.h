// SPDX-License-Identifier: MIT
#pragma once

#include "base/Values.h"
#include "documents/DocumentPorts.h"
#include "platform/Prompts.h"
#include "shell/ShellPorts.h"

#include <QWidget>

#include <functional>

namespace ostrel {

class frmMethod;
class frmNotes;

/// The windows with the method and the notes of the chart in front. Each window is open exactly while its toolbar
/// button is pressed: the button opens and closes it, and closing the window releases the button.
class TextWindows {
public:
    /// The running log, which gets the recorder's notes too.
    struct Log {
        Run &chart;
        std::function<void()> writeNow; ///< writes them to the disk while logging is on
    };

    /// `parent` is the windows' parent.
    TextWindows(TabStates &tabs, const DocumentCharts &charts, Log log, ShellWindow &window, Prompts &prompts,
                QWidget *parent);

    void mnuMethod_Click();
    void mnuNotes_Click();

    /// A click on the button; its Value is already the one after the click.
    void cmdMethod_Click();
    void cmdNotes_Click();

private:
    void click(const char *button, bool pressed);
    void takeNotes(const QString &Notes);
    Run &chart() const { return *charts_[tabs_.CurrentChart]; }

    TabStates &tabs_;
    DocumentCharts charts_;
    Log log_;
    ShellWindow &window_;
    Prompts &prompts_;
    QWidget *parent_;
    frmMethod *frmMethod_ = nullptr; ///< null unless the window is open
    frmNotes *frmNotes_ = nullptr;
};

} // namespace ostrel
