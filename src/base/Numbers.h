// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>
#include <QDateTime>
#include <QString>

namespace ostrel {

/// Conversions between numbers, dates and texts. Texts follow the user's locale, without group separators.

/// To the nearest whole number, a half to the even one. Raises overflow (6) outside the type or for not-a-number.
qint16 rounded16(double value);
qint32 rounded32(double value);

/// The "0.000" (3 decimals) and "0.0" (1 decimal) of the screen.
QString fixedNumber(double value, int decimals);

/// As short as the value allows: up to 15 digits, no trailing zeros ("10", "2.5").
QString generalNumber(double value);

/// The same for a float: up to 7 digits.
QString generalNumber(float value);

/// A whole number with a blank in the place of the minus sign (" 150", "-3").
QString leadingBlankNumber(int value);

/// The number that a text holds, blanks around it allowed. Raises type mismatch (13) for anything else.
double numberFrom(const QString &text);

/// The number at the beginning of a text, 0 without one. The decimal separator is always a point; blanks are ignored.
double leadingNumber(const QString &text);

/// The locale's decimal separator: the second character of 1.3 as text.
QChar decimalSeparator();

/// The locale's short form of a date, or the form 2026-11-21 when the short form is longer than `longestDate`.
constexpr int longestDate = 13;
QString dateText(const QDate &date);

/// The time to the second as the locale has it, without a time zone.
QString timeText(const QTime &time);

/// Date and time in these forms, as the error log and method texts have them.
QString generalDate(const QDateTime &when);

} // namespace ostrel
