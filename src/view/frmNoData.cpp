// SPDX-License-Identifier: MIT
#include "view/frmNoData.h"

#include "base/HelpContexts.h"
#include "forms/Controls.h"
#include "forms/HelpContext.h"

#include <QLabel>
#include <QVBoxLayout>

namespace ostrel {

namespace {

struct AnswerRow {
    const char *name;
    const char *caption;
    NoDataAnswer answer;
};

constexpr AnswerRow answers[] = {
    {"cmdOk", "&Ok", NoDataAnswer::Ok},
    {"cmdSetup", "&Setup", NoDataAnswer::Setup},
    {"cmdExit", "&Exit", NoDataAnswer::Exit},
};

} // namespace

frmNoData::frmNoData(QWidget *parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmNoData"));
    setWindowTitle(QStringLiteral("Ostrel"));
    setHelpContext(*this, HelpContext::Trouble);

    auto *Label1 = new QLabel(tr("No data is being received."), this);
    Label1->setObjectName(QStringLiteral("Label1"));

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (const AnswerRow &row : answers) {
        auto *button = new CommandButton(this);
        button->setObjectName(QLatin1String(row.name));
        button->setText(QLatin1String(row.caption));
        button->setDefault(row.answer == NoDataAnswer::Ok);
        button->Click = [this, answer = row.answer] {
            answer_ = answer;
            accept();
        };
        buttons->addWidget(button);
    }

    auto *form = new QVBoxLayout(this);
    form->setContentsMargins(16, 16, 16, 12);
    form->setSpacing(16);
    form->setSizeConstraint(QLayout::SetFixedSize);
    form->addWidget(Label1);
    form->addLayout(buttons);
}

NoDataAnswer frmNoData::ask() {
    exec();
    return answer_;
}

} // namespace ostrel
