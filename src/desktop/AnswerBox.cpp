// SPDX-License-Identifier: MIT
#include "desktop/AnswerBox.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>

namespace ostrel {

namespace {

/// Converts CR LF and a single CR to LF, which Qt shows as a line end.
QString withLineFeeds(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

} // namespace

AnswerBox::AnswerBox(Icon icon, const QString &title, const QString &text, StandardButtons buttons, QWidget *parent)
    : QMessageBox(icon, title, withLineFeeds(text), buttons, parent) {
    setTextFormat(Qt::PlainText);
    if (QMessageBox::buttons().size() == 1)
        setEscapeButton(QMessageBox::buttons().constFirst());
    else
        setEscapeButton(button(Cancel));
    const Qt::WindowFlags closeBox = Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    setWindowFlags(Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   (mayClose() ? closeBox : Qt::WindowFlags()));
}

// Qt itself would take Escape for No in a box of Yes and No.

void AnswerBox::reject() {
    if (mayClose())
        QMessageBox::reject();
}

void AnswerBox::closeEvent(QCloseEvent *event) {
    if (mayClose())
        QMessageBox::closeEvent(event);
    else
        event->ignore();
}

void AnswerBox::keyPressEvent(QKeyEvent *event) {
    if (mayClose() || !event->matches(QKeySequence::Cancel))
        QMessageBox::keyPressEvent(event);
}

} // namespace ostrel
