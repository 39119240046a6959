// SPDX-License-Identifier: MIT
#include "desktop/QtTimer.h"

namespace ostrel {

QtTimer::QtTimer(QObject *parent, const QString &name, int interval, bool on)
    : interval_(interval), timer_(new QTimer(parent)) {
    timer_->setObjectName(name);
    timer_->setTimerType(Qt::PreciseTimer); // a coarse timer is wrong by up to 5 % of its interval
    timer_->setInterval(interval);
    QObject::connect(timer_, &QTimer::timeout, timer_, [this] {
        if (Tick)
            Tick();
    });
    QtTimer::setEnabled(on);
}

QtTimer::~QtTimer() { delete timer_; }

bool QtTimer::Enabled() const { return timer_ && timer_->isActive(); }

void QtTimer::setEnabled(bool on) {
    if (!timer_ || on == timer_->isActive())
        return;
    if (on)
        timer_->start();
    else
        timer_->stop();
}

} // namespace ostrel
