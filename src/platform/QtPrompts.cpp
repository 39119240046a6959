// SPDX-License-Identifier: MIT
#include "platform/QtPrompts.h"

#include "base/Values.h"

#include <QApplication>
#include <QMessageBox>

#include <vector>

namespace {

struct Button {
    QMessageBox::StandardButton button;
    BoxAnswer answer;
};

/// From left to right as they are counted. The last one is what closing the box stands for.
std::vector<Button> buttonsOf(BoxButtons buttons) {
    constexpr Button ok{QMessageBox::Ok, BoxAnswer::Ok};
    constexpr Button cancel{QMessageBox::Cancel, BoxAnswer::Cancel};
    constexpr Button yes{QMessageBox::Yes, BoxAnswer::Yes};
    constexpr Button no{QMessageBox::No, BoxAnswer::No};
    switch (buttons) {
    case BoxButtons::YesNoCancel:
        return {yes, no, cancel};
    case BoxButtons::YesNo:
        return {yes, no};
    case BoxButtons::OkCancel:
        return {ok, cancel};
    case BoxButtons::Ok:
        break;
    }
    return {ok};
}

QMessageBox::Icon iconOf(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

/// Every way to end a line, CR alone too, as Qt shows it.
QString withLineFeeds(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

/// Under the hourglass of the work beneath, a box would seem to ask for patience.
int execWithArrow(QMessageBox &window) {
    if (QApplication::overrideCursor() == nullptr)
        return window.exec();
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int chosen = window.exec();
    QApplication::restoreOverrideCursor();
    return chosen;
}

} // namespace

BoxAnswer QtPrompts::show(const MessageBox &box) {
    const std::vector<Button> buttons = buttonsOf(box.buttons);
    QMessageBox window(QApplication::activeWindow());
    window.setObjectName(QStringLiteral("MsgBox"));
    window.setTextFormat(Qt::PlainText);
    window.setText(withLineFeeds(box.text));
    window.setWindowTitle(box.caption.isEmpty() ? QString::fromLatin1(AppTitle) : box.caption);
    window.setIcon(iconOf(box.icon));
    for (const Button &button : buttons)
        window.addButton(button.button);
    window.setEscapeButton(buttons.back().button);
    window.setDefaultButton(buttons.at(static_cast<std::size_t>(box.defaultButton - 1)).button);
    const int chosen = execWithArrow(window);
    for (const Button &button : buttons) {
        if (button.button == chosen)
            return button.answer;
    }
    return buttons.back().answer;
}

void QtPrompts::beep() { QApplication::beep(); }

void QtPrompts::setMousePointer(MousePointer pointer) {
    if (pointer == pointer_)
        return;
    pointer_ = pointer;
    if (pointer == MousePointer::Hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}
