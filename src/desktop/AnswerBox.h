// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

namespace ostrel {

/// A message box whose answer is always one of its buttons. Escape and the close box mean Cancel if there is such a
/// button, or the only button. Otherwise neither a key nor the window manager nor code closes the box, so that nobody
/// answers Yes or No by accident.
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
