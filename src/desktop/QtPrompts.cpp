// SPDX-License-Identifier: MIT
#include "desktop/QtPrompts.h"

#include "base/HelpContexts.h"
#include "base/Values.h"
#include "desktop/AnswerBox.h"

#include <QApplication>

#include <vector>

namespace ostrel {

namespace {

struct Button {
    QMessageBox::StandardButton button;
    BoxAnswer answer;
};

/// From left to right, as defaultButton counts them.
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

QMessageBox::StandardButtons standardButtons(const std::vector<Button> &buttons) {
    QMessageBox::StandardButtons all;
    for (const Button &button : buttons)
        all |= button.button;
    return all;
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

/// Shows the arrow pointer meanwhile: with the hourglass the box would seem to be busy.
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
    const QString title = box.caption.isEmpty() ? QString::fromLatin1(AppTitle) : box.caption;
    AnswerBox window(iconOf(box.icon), title, box.text, standardButtons(buttons), QApplication::activeWindow());
    window.setObjectName(QStringLiteral("MsgBox"));
    window.setProperty(HelpContext::property, box.HelpContextID);
    window.setDefaultButton(buttons.at(static_cast<std::size_t>(box.defaultButton - 1)).button);
    const int chosen = execWithArrow(window);
    for (const Button &button : buttons) {
        if (button.button == chosen)
            return button.answer;
    }
    return buttons.back().answer; // the box was closed
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

} // namespace ostrel
