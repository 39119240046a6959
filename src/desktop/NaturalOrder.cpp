// SPDX-License-Identifier: MIT
#include "desktop/NaturalOrder.h"

namespace ostrel {

namespace {

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

/// Takes the digits off the front of a text and drops leading zeros, so that a longer number is always the larger one.
QStringView takeNumber(QStringView &text) {
    qsizetype end = 0;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    qsizetype begin = 0;
    while (begin + 1 < end && text[begin] == QLatin1Char('0'))
        ++begin;
    const QStringView number = text.sliced(begin, end - begin);
    text = text.sliced(end);
    return number;
}

} // namespace

bool naturallyLess(QStringView left, QStringView right) {
    while (!left.isEmpty() && !right.isEmpty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const QStringView a = takeNumber(left);
            const QStringView b = takeNumber(right);
            if (a.size() != b.size())
                return a.size() < b.size();
            if (const int order = a.compare(b); order != 0)
                return order < 0;
        } else if (left.front() != right.front()) {
            return left.front() < right.front();
        } else {
            left = left.sliced(1);
            right = right.sliced(1);
        }
    }
    return left.size() < right.size();
}

} // namespace ostrel
