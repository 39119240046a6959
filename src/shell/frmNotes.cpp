// SPDX-License-Identifier: MIT
#include "shell/frmNotes.h"

#include "base/HelpContexts.h"
#include "forms/Controls.h"
#include "forms/HelpContext.h"
#include "forms/NamedControl.h"
#include "shell/TextBox.h"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QVBoxLayout>

#include <utility>

namespace ostrel {

frmNotes::frmNotes(const Run &chart, Prompts &prompts, std::function<void(const QString &)> taken,
                   std::function<void()> release, QWidget *parent)
    : QDialog(parent), chart_(chart), prompts_(prompts), taken_(std::move(taken)), release_(std::move(release)),
      txtNotes_(new TextBox(QStringLiteral("txtNotes"), QStringLiteral("Notes"), this)) {
    setObjectName(QStringLiteral("frmNotes"));
    setWindowTitle(QStringLiteral("Notes"));
    setSizeGripEnabled(true);
    setHelpContext(*this, HelpContext::Notes);
    txtNotes_->makeRoomFor(60, 12);
    txtNotes_->setText(chart_.GetNotes());

    auto *buttons = new QDialogButtonBox(this);
    const auto addButton = [this, buttons](const char *name, const char *caption, void (frmNotes::*click)()) {
        auto *button = namedControl<CommandButton>(name, caption, this);
        button->setAutoDefault(false); // Enter begins a new line
        button->Click = [this, click] { (this->*click)(); };
        buttons->addButton(button, QDialogButtonBox::ActionRole);
    };
    addButton("cmdOK", "&OK", &frmNotes::cmdOK_Click);
    addButton("cmdCancel", "&Cancel", &frmNotes::cmdCancel_Click);

    auto *form = new QVBoxLayout(this);
    form->addWidget(txtNotes_);
    form->addWidget(buttons);
}

bool frmNotes::isChanged() const { return txtNotes_->Text() != chart_.GetNotes(); }

void frmNotes::cmdOK_Click() {
    NotesClosing_ = true;
    if (isChanged())
        taken_(txtNotes_->Text());
    CloseNotes();
}

void frmNotes::cmdCancel_Click() {
    NotesClosing_ = true;
    CloseNotes();
}

bool frmNotes::CloseNotes() {
    bool result = true;
    if (isChanged()) {
        const BoxAnswer answer = prompts_.show({.text = QStringLiteral("Your notes have been changed\rSave changes ?"),
                                                .icon = BoxIcon::Question,
                                                .buttons = BoxButtons::YesNoCancel,
                                                .HelpContextID = HelpContext::Notes});
        if (answer == BoxAnswer::Yes)
            taken_(txtNotes_->Text());
        result = answer != BoxAnswer::Cancel;
    }
    if (result)
        release_();
    NotesClosing_ = false;
    return result;
}

/// The window's close box.
void frmNotes::closeEvent(QCloseEvent *event) { event->setAccepted(NotesClosing_ || CloseNotes()); }

} // namespace ostrel
