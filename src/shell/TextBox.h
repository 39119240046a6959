// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QPlainTextEdit>

namespace ostrel {

/// Courier New, or this desktop's own fixed-pitch font.
QFont fixedPitchFont();

/// A text box of several lines; its texts have CR LF line ends. The Tab key goes to the next control.
class TextBox : public QPlainTextEdit {
    Q_OBJECT
public:
    /// `spoken` is the name for a screen reader.
    TextBox(const QString &name, const QString &spoken, QWidget *parent);

    /// Sets the preferred size in letters and lines; the user may make the box larger or smaller.
    void makeRoomFor(int letters, int lines);

    /// Exactly the text of setText as long as nobody has edited it.
    QString Text() const;
    void setText(const QString &text);

    QSize sizeHint() const override { return room_; }

private:
    QString written_;
    QSize room_;
};

} // namespace ostrel
