// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>

/// The lowest cost of a live chart: every 700 ms a strip of the window gets a new piece of line.
class Strip : public QWidget {
    Q_OBJECT
public:
    Strip() {
        setAttribute(Qt::WA_OpaquePaintEvent);
        connect(&timer_, &QTimer::timeout, this, [this] {
            left_ = (left_ + width_) % width();
            update(left_, 0, width_, height());
        });
        timer_.start(700);
    }

protected:
    void paintEvent(QPaintEvent *event) override {
        QPainter painter(this);
        painter.fillRect(event->rect(), Qt::white);
        painter.drawLine(event->rect().topLeft(), event->rect().bottomRight());
    }

private:
    static constexpr int width_ = 4;
    QTimer timer_;
    int left_ = 0;
};

int main(int argc, char *argv[]) {
    QApplication application(argc, argv);
    Strip strip;
    strip.resize(577, 420);
    strip.show();
    return QApplication::exec();
}

#include "strip_timer.moc"
