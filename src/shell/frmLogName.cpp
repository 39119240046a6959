// SPDX-License-Identifier: MIT
#include "shell/frmLogName.h"

#include "base/HelpContexts.h"
#include "forms/FormBuilder.h"
#include "forms/HelpContext.h"

#include <utility>

namespace ostrel {

namespace {

constexpr int longestName = 25;
constexpr int margin = 8; // pixels below and to the right of the last control

// clang-format off
constexpr ControlRow controls[] = {
    // name              kind          text       parent  left   top  width height
    {"txtLogFileName",   Kind::Text,   "Default", "",      240,  240, 3855, 330, Ink::Plain, "Velquin system name"},
    {"lblPrompt",        Kind::Label,  "Valid characters:   0-9, A-Z, and a-z Maximum length:   25 characters",
                                                  "",      240,  690,    0,   0},
    {"cmdOKButton",      Kind::Button, "OK",      "",     2280, 1140, 1455, 400},
    {"cmdCancelButton",  Kind::Button, "Cancel",  "",     3900, 1140, 1455, 400},
};
// clang-format on

/// Only characters that are safe in a file name, blanks included.
bool isAllowed(int KeyAscii) {
    constexpr int backspace = 8;
    return KeyAscii == backspace || KeyAscii == ' ' || (KeyAscii >= '0' && KeyAscii <= '9') ||
           (KeyAscii >= 'A' && KeyAscii <= 'Z') || (KeyAscii >= 'a' && KeyAscii <= 'z');
}

} // namespace

frmLogName::frmLogName(const QString &SystemName, Prompts &prompts, std::function<void(const QString &)> named,
                       QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), prompts_(prompts) {
    setObjectName(QStringLiteral("frmLogName"));
    setWindowTitle(QStringLiteral("Enter Velquin System Name"));
    setHelpContext(*this, HelpContext::SystemName);
    FormBuilder builder(*this);
    builder.build(controls);
    setFixedSize(childrenRect().size() + QSize(childrenRect().x() + margin, childrenRect().y() + margin));

    txtLogFileName_ = builder.control<TextEntry>(QStringLiteral("txtLogFileName"));
    cmdOKButton_ = builder.control<CommandButton>(QStringLiteral("cmdOKButton"));
    txtLogFileName_->setMaxLength(longestName);
    txtLogFileName_->Change = [this] { txtLogFileName_Change(); };
    txtLogFileName_->KeyPress = [this](int KeyAscii) { return txtLogFileName_KeyPress(KeyAscii); };
    txtLogFileName_->setText(SystemName);
    txtLogFileName_->selectWhole();
    txtLogFileName_->setFocus();

    cmdOKButton_->setDefault(true);
    cmdOKButton_->Click = [this, named = std::move(named)] {
        named(txtLogFileName_->Text());
        accept();
    };
    builder.control<CommandButton>(QStringLiteral("cmdCancelButton"))->Click = [this] { reject(); };
}

void frmLogName::txtLogFileName_Change() { cmdOKButton_->setEnabled(!txtLogFileName_->Text().isEmpty()); }

int frmLogName::txtLogFileName_KeyPress(int KeyAscii) {
    constexpr int enter = 13;
    if (KeyAscii == enter) // presses the default button
        return KeyAscii;
    txtLogFileName_Change();
    if (isAllowed(KeyAscii))
        return KeyAscii;
    prompts_.beep();
    return keyRefused;
}

} // namespace ostrel
