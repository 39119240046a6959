// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

/// The computer's date and time.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};
