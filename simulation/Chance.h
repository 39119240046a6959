// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <cmath>

namespace ostrel {

/// A sequence of numbers that looks random and follows from one number (splitmix64).
class Chance {
public:
    explicit Chance(quint64 number = 1) : state_(number) {}

    quint64 next() {
        quint64 z = state_ += 0x9e3779b97f4a7c15;
        z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
        z = (z ^ z >> 27) * 0x94d049bb133111eb;
        return z ^ z >> 31;
    }
    /// 0 to one less than `below`.
    int operator()(int below) { return static_cast<int>(next() % static_cast<quint64>(below)); }
    bool oneIn(int times) { return operator()(times) == 0; }
    /// How long until something comes that comes once in so many milliseconds on the average.
    qint64 wait(double mean) { return qRound64(-std::log1p(-static_cast<double>(next() >> 11) * 0x1p-53) * mean); }

private:
    quint64 state_;
};

} // namespace ostrel
