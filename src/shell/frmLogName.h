// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Prompts.h"

#include <QDialog>

#include <functional>

namespace ostrel {

class CommandButton;
class TextEntry;

/// Asks for the name of the instrument's system. Made anew each time it is shown.
class frmLogName : public QDialog {
    Q_OBJECT
public:
    /// `named` is called with the name that the operator confirms.
    frmLogName(const QString &SystemName, Prompts &prompts, std::function<void(const QString &SystemName)> named,
               QWidget *parent);

private:
    void txtLogFileName_Change();
    int txtLogFileName_KeyPress(int KeyAscii);

    Prompts &prompts_;
    TextEntry *txtLogFileName_;
    CommandButton *cmdOKButton_;
};

} // namespace ostrel
