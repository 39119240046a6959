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

/// Qt's controls with the program's rules for handlers: a handler runs at once, within the setter or the operator's
/// action, and a setter that the program calls has the same effect as an action of the operator.

/// The return value of a key filter for a key that must have no effect.
inline constexpr int keyRefused = 0;

/// Keys go to `KeyPress` before the control gets them: it takes the character's code (8 backspace, 13 Enter) and
/// returns it to let the key through, or keyRefused to drop it. Keys without a character (arrows, Home, Delete) and
/// shortcuts (Ctrl+C, Ctrl+V) never go there.
using KeyFilter = std::function<int(int KeyAscii)>;

/// An entry line. It takes the usual Ctrl keys for editing; all others are the menus' shortcuts.
class EntryLine : public QLineEdit {
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;

    KeyFilter KeyPress;
    /// An entry for a number: what is pasted or dropped goes in only if the key filter lets every character through,
    /// one after the other, and a click that brings the focus selects all of it, as Tab does.
    bool numeric = false;

    /// The start of the selection, or the place of the cursor when nothing is selected.
    int SelStart() const { return hasSelectedText() ? selectionStart() : cursorPosition(); }

protected:
    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    bool refuses(const QString &typed) const;
    void type(const QString &text);

    bool focusByClick_ = false; ///< the mouse button is still down
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

    std::function<void()> Change;   ///< runs when the text is typed or written, also when it stays the same
    std::function<void()> GotFocus; ///< runs when the focus comes from another control of the window

    QString Text() const override { return text(); }
    void setText(const QString &text); ///< runs Change
    QString SelText() const override { return selectedText(); }
    int SelStart() const override { return EntryLine::SelStart(); }
    void selectWhole() override { selectAll(); }

protected:
    void focusInEvent(QFocusEvent *event) override;
};

/// A drop-down list, to pick one of its items.
class DropDownList : public QComboBox {
    Q_OBJECT
public:
    explicit DropDownList(QWidget *parent = nullptr);

    std::function<void()> Click; ///< runs at a pick by hand or by setListIndex, also of the item already shown

    void setListIndex(int index); ///< runs Click

protected:
    void wheelEvent(QWheelEvent *event) override;
};

/// A combo box whose entry takes typed values as well as those of its list.
class ComboEntry : public DropDownList, public EntryText {
    Q_OBJECT
public:
    explicit ComboEntry(QWidget *parent = nullptr);

    std::function<void()> Change; ///< runs when the text is typed or written by setText, but not for a pick
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

/// One of a group of option buttons, which have one parent. It is cleared only by choosing another one.
class OptionButton : public QRadioButton {
    Q_OBJECT
public:
    explicit OptionButton(QWidget *parent = nullptr);

    std::function<void()> Click;      ///< runs when the option becomes the chosen one, by hand or by setValue
    std::function<void()> ClickAgain; ///< runs when the operator clicks the option that is the chosen one

    bool Value() const { return isChecked(); }
    void setValue(bool on);

private:
    bool wasChosen_ = false; ///< when the button was pressed
};

/// A box to tick.
class CheckBox : public QCheckBox {
    Q_OBJECT
public:
    explicit CheckBox(QWidget *parent = nullptr);

    std::function<void()> Click; ///< runs when Value changes, by hand or by setValue

    int Value() const { return isChecked() ? 1 : 0; } ///< 1 ticked, 0 not
    void setValue(int value);
};

/// A button that Enter also presses while it has the focus.
class CommandButton : public QPushButton {
    Q_OBJECT
public:
    explicit CommandButton(QWidget *parent = nullptr);

    std::function<void()> Click;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

/// A horizontal scroll bar for whole 16-bit numbers from 0 to Max. With a Max below 0 it runs down from 0.
class ScrollEntry : public QScrollBar {
    Q_OBJECT
    Q_PROPERTY(int Max READ Max WRITE setMax)
    Q_PROPERTY(int Value READ Value WRITE setValue)
public:
    explicit ScrollEntry(QWidget *parent = nullptr);

    std::function<void()> Change;   ///< runs when the value changes, by hand or program; a drag counts at its end
    std::function<void()> Scroll;   ///< runs while the thumb is dragged; Value follows it
    std::function<void()> GotFocus; ///< runs when a click gives the bar the focus

    int Max() const { return max_; }
    void setMax(int max); ///< raises overflow (6) outside 16 bits
    int Value() const { return max_ < 0 ? -sliderPosition() : sliderPosition(); }
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

    int max_ = 0; ///< Qt's own range goes from 0 to its amount: so arrows, trough, wheel and thumb run towards it
};

} // namespace ostrel
