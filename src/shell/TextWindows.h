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

/// The windows with the method and the notes of the chart in front. Each is up exactly while its toolbar button is
/// pressed: the button brings it up and takes it away, and its closing releases the button.
class TextWindows {
public:
    /// The running log, which keeps the notes of the recorder too.
    struct Log {
        Run &chart;
        std::function<void()> writeNow; ///< brings them to the disk, while logging is on
    };

    /// The windows' parent is `parent`.
    TextWindows(TabStates &tabs, const DocumentCharts &charts, Log log, ShellWindow &window, Prompts &prompts,
                QWidget *parent);

    void mnuMethod_Click();
    void mnuNotes_Click();

    /// A click on the button, whose Value is already that after the click.
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
    frmMethod *frmMethod_ = nullptr; ///< while it is loaded
    frmNotes *frmNotes_ = nullptr;
};

} // namespace ostrel
