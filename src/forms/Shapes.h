// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QGroupBox>
#include <QIcon>
#include <QWidget>

namespace ostrel {

/// The colour of texts, legible on light and dark desktops.
enum class Ink { Plain, Blue, Red };

/// A frame with a caption; without one it paints nothing. Its ink is also that of the controls in it.
class Frame : public QGroupBox {
    Q_OBJECT
public:
    Frame(const QString &caption, Ink ink, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void takeInk();

    Ink ink_;
};

/// A round light.
class Led : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor FillColor READ FillColor WRITE setFillColor)
public:
    explicit Led(QWidget *parent = nullptr);

    QColor FillColor() const { return fill_; }
    void setFillColor(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor fill_ = Qt::black;
};

/// A picture that is drawn anew for each size and scale of the screen.
class Picture : public QWidget {
    Q_OBJECT
public:
    Picture(const QString &file, QWidget *parent) : QWidget(parent), icon_(file) {}

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon icon_;
};

} // namespace ostrel
