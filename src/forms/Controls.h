// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include <functional>

namespace ostrel {

/// Qt's controls, made to fire as the rules of the program ask: a handler runs at once, from within the setter or the
/// operator's action, and a setter called by the program counts as much as the operator's hand.

/// What a key filter answers to a key that must have no effect.
inline constexpr int keyRefused = 0;

/// Keys go to `KeyPress` before the control sees them: it gets the character's code (8 backspace, 13 Enter) and answers
/// it again to let the key through, keyRefused to swallow it. Keys without a character (arrows, Home, Delete) and
/// shortcuts (Ctrl+C, Ctrl+V) never go there.
using KeyFilter = std::function<int(int KeyAscii)>;

/// The line that is typed into. It takes Ctrl+C for copying only while something is selected, and none of the control
/// keys of a command line: all others are the menus' shortcuts.
class EntryLine : public QLineEdit {
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;

    KeyFilter KeyPress;

    /// Where the selection begins; the caret's place when nothing is selected.
    int SelStart() const { return hasSelectedText() ? selectionStart() : cursorPosition(); }

protected:
    bool event(QEvent *event) override;

private:
    bool refuses(const QString &typed) const;
};

/// An entry that a key filter may inspect.
class EntryText {
public:
    virtual ~EntryText() = default;
    virtual QString Text() const = 0;
    virtual QString SelText() const = 0;
    virtual int SelStart() const = 0;
    virtual void selectWhole() = 0;
};

/// A text box.
class TextEntry : public EntryLine, public EntryText {
    Q_OBJECT
public:
    explicit TextEntry(QWidget *parent = nullptr);

    std::function<void()> Change;   ///< the text was typed or written; also when the same text is written again
    std::function<void()> GotFocus; ///< the focus came from another control of the window

    QString Text() const override { return text(); }
    void setText(const QString &text); ///< runs Change
    QString SelText() const override { return selectedText(); }
    int SelStart() const override { return EntryLine::SelStart(); }
    void selectWhole() override { selectAll(); }

protected:
    void focusInEvent(QFocusEvent *event) override;
};

/// A list that drops down, to pick one of its items.
class DropDownList : public QComboBox {
    Q_OBJECT
public:
    explicit DropDownList(QWidget *parent = nullptr);

    std::function<void()> Click; ///< an item was picked, by hand or by setListIndex; also the one already shown

    void setListIndex(int index); ///< runs Click

protected:
    void wheelEvent(QWheelEvent *event) override;
};

/// A combo box whose entry takes typed values as well as those of its list.
class ComboEntry : public DropDownList, public EntryText {
    Q_OBJECT
public:
    explicit ComboEntry(QWidget *parent = nullptr);

    std::function<void()> Change; ///< the text was typed or written by setText; a pick does not run it
    KeyFilter KeyPress;

    QString Text() const override { return currentText(); }
    void setText(const QString &text);        ///< leaves the list alone; runs Change
    void addItemQuietly(const QString &text); ///< picks nothing
    QString SelText() const override { return line_->selectedText(); }
    int SelStart() const override { return line_->SelStart(); }
    void selectWhole() override { line_->selectAll(); }

private:
    EntryLine *line_;
};

/// One of a group of option buttons (those of one parent). An option is taken back only by choosing another.
class OptionButton : public QRadioButton {
    Q_OBJECT
public:
    explicit OptionButton(QWidget *parent = nullptr);

    std::function<void()> Click; ///< runs when the option becomes the chosen one, by hand or by setValue

    bool Value() const { return isChecked(); }
    void setValue(bool on);
};

/// A box to tick.
class CheckBox : public QCheckBox {
    Q_OBJECT
public:
    explicit CheckBox(QWidget *parent = nullptr);

    std::function<void()> Click; ///< runs when Value is another one, by hand or by setValue

    int Value() const { return isChecked() ? 1 : 0; } ///< 1 ticked, 0 not
    void setValue(int value);
};

/// A button that Enter presses too while it has the focus.
class CommandButton : public QPushButton {
    Q_OBJECT
public:
    explicit CommandButton(QWidget *parent = nullptr);

    std::function<void()> Click;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

/// A horizontal scroll bar over whole numbers of 16 bits from 0 to Max. A Max below 0 is kept: the bar then runs down.
class ScrollEntry : public QScrollBar {
    Q_OBJECT
    Q_PROPERTY(int Max READ Max WRITE setMax)
    Q_PROPERTY(int Value READ Value WRITE setValue)
public:
    explicit ScrollEntry(QWidget *parent = nullptr);

    std::function<void()> Change;   ///< the value is another one, by hand or by the program; not before a drag ends
    std::function<void()> Scroll;   ///< the thumb moved while it is being dragged; Value follows it
    std::function<void()> GotFocus; ///< the bar was clicked

    int Max() const { return max_; }
    void setMax(int max); ///< raises overflow (6) outside 16 bits
    int Value() const { return sliderPosition(); }
    void setValue(int value); ///< held within the range; raises overflow (6) outside 16 bits
    int LargeChange() const { return pageStep(); }
    void setLargeChange(int minutes) { setPageStep(minutes); }
    int SmallChange() const { return singleStep(); }
    void setSmallChange(int minutes) { setSingleStep(minutes); }

protected:
    void focusInEvent(QFocusEvent *event) override;

private:
    template <typename Setter>
    void changing(Setter &&set);

    int max_ = 0;
};

} // namespace ostrel
