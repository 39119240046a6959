// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Timer.h"

#include <QPointer>
#include <QTimer>

namespace ostrel {

/// A timer with QTimer, precise to the millisecond while the event loop is free.
class QtTimer : public Timer {
public:
    /// The QTimer becomes a child of `parent`, which may be destroyed first, with `name` as its object name.
    QtTimer(QObject *parent, const QString &name, int interval, bool on = false);
    ~QtTimer() override;
    QtTimer(const QtTimer &) = delete;
    QtTimer &operator=(const QtTimer &) = delete;

    bool Enabled() const override;
    void setEnabled(bool on) override;
    int Interval() const override { return interval_; }

private:
    int interval_;
    QPointer<QTimer> timer_;
};

} // namespace ostrel
