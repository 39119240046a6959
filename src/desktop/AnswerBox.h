// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

namespace ostrel {

/// A message box whose answer is always one of its buttons. Escape and the close box are Cancel where that is among
/// them, and the button where there is only one. Otherwise neither key nor window manager nor code closes the box: a
/// reflex is no answer to Yes or No.
///
/// Its text is plain, with CR, LF or both at the end of a line.
class AnswerBox : public QMessageBox {
    Q_OBJECT
public:
    AnswerBox(Icon icon, const QString &title, const QString &text, StandardButtons buttons, QWidget *parent);

    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool mayClose() const { return escapeButton() != nullptr; }
};

} // namespace ostrel
