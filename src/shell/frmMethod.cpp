// SPDX-License-Identifier: MIT
#include "shell/frmMethod.h"

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

frmMethod::frmMethod(const QString &MethodText, std::function<void()> release, QWidget *parent)
    : QDialog(parent), release_(std::move(release)) {
    setObjectName(QStringLiteral("frmMethod"));
    setWindowTitle(QStringLiteral("Method"));
    setSizeGripEnabled(true);
    setHelpContext(*this, HelpContext::Method);

    auto *txtMethod = new TextBox(QStringLiteral("txtMethod"), windowTitle(), this);
    txtMethod->setFont(fixedPitchFont()); // the instrument's columns line up
    txtMethod->setReadOnly(true);
    txtMethod->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtMethod->makeRoomFor(72, 20);
    txtMethod->setText(MethodText);

    auto *cmdClose = namedControl<CommandButton>("cmdClose", "&OK", this);
    cmdClose->setDefault(true);
    cmdClose->Click = [this] { CloseMethod(); };
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdClose, QDialogButtonBox::ActionRole);

    auto *form = new QVBoxLayout(this);
    form->addWidget(txtMethod);
    form->addWidget(buttons);
}

void frmMethod::closeEvent(QCloseEvent *event) {
    CloseMethod();
    event->accept();
}

} // namespace ostrel
