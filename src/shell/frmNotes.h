// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Run.h"
#include "platform/Prompts.h"

#include <QDialog>

#include <functional>

namespace ostrel {

class TextBox;

/// Lets the user edit the notes of a run. Made anew each time it is shown.
class frmNotes : public QDialog {
    Q_OBJECT
public:
    /// `taken` is called with the new notes of `chart`. `release` releases the toolbar button of this window, which
    /// unloads the window.
    frmNotes(const Run &chart, Prompts &prompts, std::function<void(const QString &Notes)> taken,
             std::function<void()> release, QWidget *parent);

    /// Asks about changed notes. False when the user stays in the window; otherwise it is unloaded.
    bool CloseNotes();
    void unload() { done(Accepted); }

    void reject() override { cmdCancel_Click(); } ///< Escape

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void cmdOK_Click();
    void cmdCancel_Click();
    bool isChanged() const;

    const Run &chart_;
    Prompts &prompts_;
    std::function<void(const QString &Notes)> taken_;
    std::function<void()> release_;
    TextBox *txtNotes_;
    bool NotesClosing_ = false; ///< one of the buttons is closing the window
};

} // namespace ostrel
