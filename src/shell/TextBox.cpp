// SPDX-License-Identifier: MIT
#include "shell/TextBox.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QScrollBar>

namespace ostrel {

QFont fixedPitchFont() {
    const QFont courier(QStringLiteral("Courier New"));
    if (QFontInfo(courier).fixedPitch())
        return courier;
    return QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

TextBox::TextBox(const QString &name, const QString &spoken, QWidget *parent) : QPlainTextEdit(parent) {
    setObjectName(name);
    setAccessibleName(spoken);
    setTabChangesFocus(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void TextBox::makeRoomFor(int letters, int lines) {
    const QFontMetrics metrics(font());
    const int around = 2 * (frameWidth() + int(document()->documentMargin()));
    room_ = {metrics.horizontalAdvance(QString(letters, u'0')) + around + verticalScrollBar()->sizeHint().width(),
             metrics.lineSpacing() * lines + around};
}

QString TextBox::Text() const {
    if (!document()->isModified())
        return written_;
    QString text = document()->toRawText(); // toPlainText would replace no-break spaces by blanks
    return text.replace(QChar::ParagraphSeparator, QStringLiteral("\r\n"))
        .replace(QChar::LineSeparator, QStringLiteral("\r\n"));
}

void TextBox::setText(const QString &text) {
    written_ = text;
    setPlainText(text);
}

} // namespace ostrel
