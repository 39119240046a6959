// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "documents/DocumentPorts.h"
#include "documents/SaveFiles.h"
#include "platform/Prompts.h"

namespace ostrel {

/// Empties the recorder's tab and closes the files of the others. Both ask first when the data are not saved.
class ClearAndClose {
public:
    ClearAndClose(TabStates &tabs, RunState &run, const DocumentCharts &charts, DocumentWindow &window,
                  Prompts &prompts, ErrorRoute &errors, SaveFiles &save);

    /// The recorder's axes and view stay. Nothing is cleared when the tab still has no file name after the save.
    void mnuClear_Click();
    /// Closes the file in front. The files of the tabs behind it are read again, each one tab further to the left, with
    /// the notes that the operator has changed; the tabs keep their own view. A file that cannot be read again, or a
    /// run-time error, is reported to the operator and ends the routine at that point.
    void mnuClose_Click();

private:
    BoxAnswer askToSave(const QString &text);
    void closeTab(int c);
    /// False when the file of the next tab cannot be read again.
    bool takeOverNextTab(int i);
    void emptyLastTab();

    TabStates &tabs_;
    RunState &run_;
    DocumentCharts charts_;
    DocumentWindow &window_;
    Prompts &prompts_;
    ErrorRoute &errors_;
    SaveFiles &save_;
};

} // namespace ostrel
