// SPDX-License-Identifier: MIT
#include "forms/Shapes.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace ostrel {

namespace {

bool isDark(const QPalette &palette) { return palette.color(QPalette::Window).lightness() < 128; }

QColor textColor(Ink ink, const QPalette &palette) {
    const bool dark = isDark(palette);
    switch (ink) {
    case Ink::Blue:
        return dark ? QColor(0x8ab4ff) : QColor(0x0a3fd1);
    case Ink::Red:
        return dark ? QColor(0xff8f85) : QColor(0xc81414);
    case Ink::Plain:
        break;
    }
    return palette.color(QPalette::WindowText);
}

QColor between(const QColor &one, const QColor &other, qreal share) {
    const auto mixed = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mixed(one.red(), other.red()), mixed(one.green(), other.green()), mixed(one.blue(), other.blue())};
}

QColor lineColor(const QPalette &palette) {
    return between(palette.color(QPalette::Window), palette.color(QPalette::Active, QPalette::WindowText), 0.25);
}

} // namespace

Frame::Frame(const QString &caption, Ink ink, QWidget *parent) : QGroupBox(caption, parent), ink_(ink) { takeInk(); }

void Frame::takeInk() {
    if (ink_ == Ink::Plain)
        return;
    const QColor color = textColor(ink_, palette());
    if (palette().color(QPalette::Active, QPalette::WindowText) == color)
        return;
    QPalette inked;
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        for (const auto role : {QPalette::WindowText, QPalette::Text})
            inked.setColor(group, role, color);
    }
    setPalette(inked);
}

void Frame::changeEvent(QEvent *event) {
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takeInk();
}

void Frame::paintEvent(QPaintEvent *) {
    if (title().isEmpty())
        return;
    constexpr qreal radius = 4;
    constexpr int captionLeft = 8;
    constexpr int captionMargin = 4;
    const QFontMetrics metrics = fontMetrics();
    const QRect caption(captionLeft, 0, metrics.horizontalAdvance(title()) + 2 * captionMargin, metrics.height());

    const int middle = metrics.height() / 2; // of the caption

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRegion(QRegion(rect()) - caption);
    painter.setPen(lineColor(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, middle + 0.5, -0.5, -0.5), radius, radius);
    painter.setClipping(false);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(caption, Qt::AlignCenter, title());
}

Led::Led(QWidget *parent) : QWidget(parent) {}

void Led::setFillColor(const QColor &color) {
    fill_ = color;
    update();
}

void Led::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal size = std::min(width(), height()) - 1;
    const QRectF light((width() - size) / 2, (height() - size) / 2, size, size);
    // The ring keeps a dark light visible on dark ground.
    painter.setPen(between(palette().color(QPalette::Window), palette().color(QPalette::WindowText), 0.5));
    painter.setBrush(fill_);
    painter.drawEllipse(light);
}

void Picture::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    icon_.paint(&painter, rect());
}

} // namespace ostrel
