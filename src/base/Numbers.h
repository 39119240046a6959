// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>
#include <QDateTime>
#include <QString>

namespace ostrel {

/// How numbers, dates and texts turn into each other. Texts follow the user's locale, without group separators.

/// To the nearest whole number, a half to the even neighbour. Raises overflow (6) outside the type or for not-a-number.
qint16 rounded16(double value);
qint32 rounded32(double value);

/// The "0.000" (3 decimals) and "0.0" (1 decimal) of the screen.
QString fixedNumber(double value, int decimals);

/// As short as the value allows: up to 15 digits, no trailing zeros ("10", "2.5").
QString generalNumber(double value);

/// The same for a single: up to 7 digits.
QString generalNumber(float value);

/// A whole number with the leading blank in place of a minus sign (" 150", "-3").
QString leadingBlankNumber(int value);

/// The number that a text holds, blanks around it allowed. Raises type mismatch (13) for anything else.
double numberFrom(const QString &text);

/// The number that a text begins with, its separator a point in every locale and blanks left out; 0 when there is none.
double leadingNumber(const QString &text);

/// The locale's decimal separator: the second character of 1.3 as text.
QChar decimalSeparator();

/// The locale's short form of a date, or 2026-11-21 where that has more letters than a list of dates has room for.
constexpr int longestDate = 13;
QString dateText(const QDate &date);

/// The time to the second as the locale has it, without a time zone.
QString timeText(const QTime &time);

/// Date and time in these forms, as the error log and method texts have them.
QString generalDate(const QDateTime &when);

} // namespace ostrel
