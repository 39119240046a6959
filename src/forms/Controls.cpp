// SPDX-License-Identifier: MIT
#include "forms/Controls.h"

#include "base/Int16.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalBlocker>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace ostrel {

namespace {

constexpr int backspaceCode = 8;
constexpr int enterCode = 13;

template <typename Handler>
void run(const Handler &handler) {
    if (handler)
        handler();
}

/// The code of a key for a key filter, 0 for a key without a character and for shortcuts.
int characterCode(const QKeyEvent &key) {
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)
        return enterCode;
    const bool shortcut = key.modifiers().testFlag(Qt::ControlModifier) && !key.modifiers().testFlag(Qt::AltModifier);
    if (shortcut)
        return 0;
    if (key.key() == Qt::Key_Backspace)
        return backspaceCode;
    const QString text = key.text();
    return !text.isEmpty() && text[0] >= QLatin1Char(' ') && key.key() != Qt::Key_Delete ? text[0].unicode() : 0;
}

bool letterWithControl(const QKeyEvent &key) {
    return key.modifiers() == Qt::ControlModifier && key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z;
}

/// The Ctrl keys that an entry handles itself and the menus do not get.
bool editingKey(const QKeyEvent &key) {
    return key.matches(QKeySequence::Copy) || key.matches(QKeySequence::Cut) || key.matches(QKeySequence::Paste) ||
           key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo) || key.matches(QKeySequence::SelectAll);
}

/// The operator moved to the control. A box or menu that closes does not count.
bool cameFromAnotherControl(const QFocusEvent &event) {
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason &&
           event.reason() != Qt::MenuBarFocusReason;
}

} // namespace

bool EntryLine::refuses(const QString &typed) const {
    return std::any_of(typed.begin(), typed.end(), [this](QChar c) { return KeyPress(c.unicode()) == keyRefused; });
}

bool EntryLine::event(QEvent *event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto &key = static_cast<const QKeyEvent &>(*event);
        if (letterWithControl(key) && !editingKey(key)) {
            event->ignore();
            return true;
        }
    }
    if (KeyPress && event->type() == QEvent::KeyPress) {
        const int code = characterCode(static_cast<const QKeyEvent &>(*event));
        if (code != 0 && KeyPress(code) == keyRefused) {
            event->accept();
            return true;
        }
    }
    if (numeric && event->type() == QEvent::KeyPress &&
        static_cast<const QKeyEvent &>(*event).matches(QKeySequence::Paste)) {
        type(QGuiApplication::clipboard()->text());
        event->accept();
        return true;
    }
    // An input method delivers characters instead of keys.
    if (KeyPress && event->type() == QEvent::InputMethod &&
        refuses(static_cast<const QInputMethodEvent &>(*event).commitString())) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

/// Puts the text in place of what is selected, as if it were typed: all of it or nothing, since a number that lost a
/// character is another one.
void EntryLine::type(const QString &text) {
    const QString before = this->text();
    const int start = SelStart();
    const int selected = int(selectedText().size());
    for (const QChar c : text.trimmed()) {
        const bool fits = c >= u' ' && (hasSelectedText() || this->text().size() < maxLength());
        if (fits && (!KeyPress || KeyPress(c.unicode()) != keyRefused)) {
            insert(c);
            continue;
        }
        QLineEdit::setText(before);
        selected > 0 ? setSelection(start, selected) : setCursorPosition(start);
        Q_EMIT textEdited(before);
        return;
    }
}

void EntryLine::focusInEvent(QFocusEvent *event) {
    QLineEdit::focusInEvent(event);
    focusByClick_ = event->reason() == Qt::MouseFocusReason;
}

void EntryLine::mousePressEvent(QMouseEvent *event) {
    if (numeric && event->button() == Qt::MiddleButton)
        return event->accept(); // pastes when it is released
    QLineEdit::mousePressEvent(event);
}

void EntryLine::mouseReleaseEvent(QMouseEvent *event) {
    if (numeric && event->button() == Qt::MiddleButton) {
        setCursorPosition(cursorPositionAt(event->position().toPoint()));
        return type(QGuiApplication::clipboard()->text(QClipboard::Selection));
    }
    QLineEdit::mouseReleaseEvent(event);
    // Only now, since a press places the cursor. A drag that has selected a part stays.
    if (std::exchange(focusByClick_, false) && numeric && !hasSelectedText())
        selectAll();
}

void EntryLine::contextMenuEvent(QContextMenuEvent *event) {
    QMenu *menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (auto *paste = menu->findChild<QAction *>(QStringLiteral("edit-paste")); paste && numeric) {
        paste->disconnect();
        connect(paste, &QAction::triggered, this, [this] { type(QGuiApplication::clipboard()->text()); });
    }
    menu->popup(event->globalPos());
}

void EntryLine::dropEvent(QDropEvent *event) {
    if (!numeric)
        return QLineEdit::dropEvent(event);
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    event->setDropAction(Qt::CopyAction); // or the source would lose a text that is not taken
    event->accept();
    type(event->mimeData()->text());
}

TextEntry::TextEntry(QWidget *parent) : EntryLine(parent) {
    connect(this, &QLineEdit::textChanged, this, [this] { run(Change); });
}

void TextEntry::setText(const QString &text) {
    {
        const QSignalBlocker quiet(this);
        QLineEdit::setText(text);
    }
    run(Change);
}

void TextEntry::focusInEvent(QFocusEvent *event) {
    EntryLine::focusInEvent(event);
    if (cameFromAnotherControl(*event))
        run(GotFocus);
}

DropDownList::DropDownList(QWidget *parent) : QComboBox(parent) {
    constexpr int longestList = 20;
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(longestList); // all of it, where the screen has the room
    connect(this, &QComboBox::activated, this, [this] { run(Click); });
}

void DropDownList::setListIndex(int index) {
    {
        const QSignalBlocker quiet(this);
        setCurrentIndex(index);
    }
    run(Click);
}

void DropDownList::wheelEvent(QWheelEvent *event) {
    // The wheel must not change a list that only happens to be under the pointer.
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

ComboEntry::ComboEntry(QWidget *parent) : DropDownList(parent), line_(new EntryLine(this)) {
    setLineEdit(line_);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    // When the entry is left, Qt treats a typed value that is in the list as a pick. Here it stays typed.
    disconnect(line_, &QLineEdit::editingFinished, this, nullptr);
    line_->numeric = true;
    line_->KeyPress = [this](int KeyAscii) { return KeyPress ? KeyPress(KeyAscii) : KeyAscii; };
    connect(line_, &QLineEdit::textEdited, this, [this] { run(Change); });
}

void ComboEntry::setText(const QString &text) {
    {
        const QSignalBlocker quiet(this);
        const QSignalBlocker quietLine(line_);
        setEditText(text);
    }
    run(Change);
}

void ComboEntry::addItemQuietly(const QString &text) {
    const QSignalBlocker quiet(this);
    const int picked = currentIndex();
    const QString shown = currentText();
    addItem(text);
    setCurrentIndex(picked);
    setEditText(shown);
}

OptionButton::OptionButton(QWidget *parent) : QRadioButton(parent) {
    connect(this, &QRadioButton::toggled, this, [this](bool on) {
        wasChosen_ = false;
        if (on)
            run(Click);
    });
    connect(this, &QRadioButton::pressed, this, [this] { wasChosen_ = isChecked(); });
    connect(this, &QRadioButton::clicked, this, [this] {
        if (wasChosen_)
            run(ClickAgain);
    });
}

void OptionButton::setValue(bool on) {
    const bool before = isChecked();
    {
        const QSignalBlocker quiet(this);
        setChecked(on);
    }
    if (isChecked() && !before)
        run(Click);
}

CheckBox::CheckBox(QWidget *parent) : QCheckBox(parent) {
    connect(this, &QCheckBox::toggled, this, [this] { run(Click); });
}

void CheckBox::setValue(int value) {
    const int before = Value();
    {
        const QSignalBlocker quiet(this);
        setChecked(value != 0);
    }
    if (Value() != before)
        run(Click);
}

CommandButton::CommandButton(QWidget *parent) : QPushButton(parent) {
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] { run(Click); });
}

void CommandButton::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

ScrollEntry::ScrollEntry(QWidget *parent) : QScrollBar(Qt::Horizontal, parent) {
    // Only a click gives the bar the focus, which a handler then passes on: the Tab key would never get past the bar.
    setFocusPolicy(Qt::ClickFocus);
    setTracking(false);
    QScrollBar::setRange(0, 0);
    connect(this, &QScrollBar::valueChanged, this, [this] { run(Change); });
    connect(this, &QScrollBar::sliderMoved, this, [this] { run(Scroll); });
}

template <typename Setter>
void ScrollEntry::changing(Setter &&set) {
    const int before = Value();
    {
        const QSignalBlocker quiet(this);
        set();
    }
    if (Value() != before)
        run(Change);
}

void ScrollEntry::setMax(int max) {
    const int held = Int16(max);
    changing([&] {
        const int value = Value();
        max_ = held;
        QScrollBar::setRange(0, std::abs(held));
        if (Value() != value) // otherwise a drag goes on
            QScrollBar::setValue(held < 0 ? -value : value);
    });
}

void ScrollEntry::setValue(int value) {
    changing([held = Int16(value), this] { QScrollBar::setValue(max_ < 0 ? -held : int(held)); });
}

void ScrollEntry::focusInEvent(QFocusEvent *event) {
    QScrollBar::focusInEvent(event);
    if (cameFromAnotherControl(*event))
        run(GotFocus);
}

} // namespace ostrel
