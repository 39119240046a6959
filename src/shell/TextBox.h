// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QPlainTextEdit>

namespace ostrel {

/// Courier New, or what this desktop has in its place.
QFont fixedPitchFont();

/// A text box of several lines, whose texts have CR LF line ends. The Tab key leads on to the next control.
class TextBox : public QPlainTextEdit {
    Q_OBJECT
public:
    /// `spoken` is how a screen reader names it.
    TextBox(const QString &name, const QString &spoken, QWidget *parent);

    /// Asks for room for so many letters and lines; the user may make it larger or smaller.
    void makeRoomFor(int letters, int lines);

    /// Exactly what was written by setText as long as nobody has changed it.
    QString Text() const;
    void setText(const QString &text);

    QSize sizeHint() const override { return room_; }

private:
    QString written_;
    QSize room_;
};

} // namespace ostrel
