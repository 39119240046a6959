// SPDX-License-Identifier: MIT
#include "view/frmSetup.h"

#include "base/HelpContexts.h"
#include "forms/FormBuilder.h"
#include "forms/HelpContext.h"

namespace ostrel {

namespace {

// clang-format off
constexpr ControlRow controls[] = {
    // name       kind          text        parent      left   top  width height
    {"frameCom",  Kind::Frame,  "COM Port", "",          120,  120, 3495, 3495},
    {"optCom(0)", Kind::Option, "COM 1",    "frameCom",  360,  480,    0,    0},
    {"optCom(1)", Kind::Option, "COM 2",    "frameCom",  360, 1080,    0,    0},
    {"optCom(2)", Kind::Option, "COM 3",    "frameCom",  360, 1680,    0,    0},
    {"optCom(3)", Kind::Option, "COM 4",    "frameCom",  360, 2280,    0,    0},
    {"optCom(4)", Kind::Option, "COM 5",    "frameCom",  360, 2880,    0,    0},
    {"optCom(5)", Kind::Option, "COM 6",    "frameCom", 2040,  480,    0,    0},
    {"optCom(6)", Kind::Option, "COM 7",    "frameCom", 2040, 1080,    0,    0},
    {"optCom(7)", Kind::Option, "COM 8",    "frameCom", 2040, 1680,    0,    0},
    {"optCom(8)", Kind::Option, "COM 9",    "frameCom", 2040, 2280,    0,    0},
    {"optCom(9)", Kind::Option, "COM 10",   "frameCom", 2040, 2880,    0,    0},
    {"cmdOk",     Kind::Button, "&OK",      "",          120, 3840, 1455,  400},
    {"cmdCancel", Kind::Button, "&Cancel",  "",         2160, 3840, 1455,  400},
};
// clang-format on

constexpr int margin = 8; // pixels below and to the right of the last control

} // namespace

frmSetup::frmSetup(PortSetup &setup, bool mayCancel, QWidget *parent)
    : QDialog(parent), setup_(setup), mayCancel_(mayCancel) {
    setObjectName(QStringLiteral("frmSetup"));
    setWindowTitle(QStringLiteral("Data Collection Setup"));
    setHelpContext(*this, HelpContext::ComPort);
    FormBuilder builder(*this);
    builder.build(controls);
    setFixedSize(childrenRect().size() + QSize(childrenRect().x() + margin, childrenRect().y() + margin));
    showChoices();

    auto *cmdOk = builder.control<CommandButton>(QStringLiteral("cmdOk"));
    cmdOk->setDefault(true);
    cmdOk->Click = [this] {
        if (setup_.ok())
            accept();
    };
    auto *cmdCancel = builder.control<CommandButton>(QStringLiteral("cmdCancel"));
    cmdCancel->setEnabled(mayCancel);
    cmdCancel->Click = [this] { reject(); };
}

void frmSetup::showChoices() {
    const auto &enabled = setup_.choices().enabled;
    for (int i = 0; i < int(enabled.size()); ++i) {
        auto *optCom = findChild<OptionButton *>(arrayName("optCom", i));
        optCom->setEnabled(enabled[i]);
        optCom->setValue(i + 1 == setup_.SelectedComPort());
        optCom->Click = [this, i] { setup_.optCom_Click(i); };
    }
}

void frmSetup::reject() {
    if (mayCancel_)
        QDialog::reject();
}

} // namespace ostrel
