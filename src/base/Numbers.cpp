// SPDX-License-Identifier: MIT
#include "base/Numbers.h"

#include "base/RunTimeError.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace ostrel {

namespace {

template <typename Whole>
Whole rounded(double value) {
    // nearbyint rounds a half to the even number in the processor's default mode, which nothing here changes.
    const double whole = std::nearbyint(value);
    if (!(whole >= std::numeric_limits<Whole>::min() && whole <= std::numeric_limits<Whole>::max()))
        throw RunTimeError(ErrorNumber::Overflow);
    return static_cast<Whole>(whole);
}

QLocale ungroupedLocale() {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    return locale;
}

/// Only the decimal separator follows the locale: the entry fields accept only the ASCII minus sign and digits.
QString withLocalPoint(QString text) { return text.replace(QLatin1Char('.'), QLocale().decimalPoint()); }

/// Removes from a time format the zone (t) and the parts of the day (B), which Qt cannot format, with the separators
/// and brackets around them. Letters between quotation marks are text.
QString withoutZone(const QString &form) {
    static const QRegularExpression quotedOrZone(
        QStringLiteral("('[^']*')|[\\s,;\\x{2013}\\x{2014}-]*[(\\[]?[tB]+[)\\]]?"));
    QString kept;
    qsizetype end = 0;
    for (const QRegularExpressionMatch &match : quotedOrZone.globalMatch(form)) {
        kept += QStringView(form).sliced(end, match.capturedStart() - end);
        kept += match.captured(1);
        end = match.capturedEnd();
    }
    kept += QStringView(form).sliced(end);
    return kept.trimmed();
}

} // namespace

qint16 rounded16(double value) { return rounded<qint16>(value); }

qint32 rounded32(double value) { return rounded<qint32>(value); }

QString fixedNumber(double value, int decimals) { return withLocalPoint(QString::number(value, 'f', decimals)); }

QString generalNumber(double value) { return withLocalPoint(QString::number(value, 'g', 15)); }

QString generalNumber(float value) { return withLocalPoint(QString::number(static_cast<double>(value), 'g', 7)); }

QString leadingBlankNumber(int value) {
    const QString digits = QString::number(value);
    return value < 0 ? digits : QLatin1Char(' ') + digits;
}

double numberFrom(const QString &text) {
    bool good = false;
    const double value = ungroupedLocale().toDouble(text.trimmed(), &good);
    if (!good || !std::isfinite(value))
        throw RunTimeError(ErrorNumber::TypeMismatch);
    return value;
}

double leadingNumber(const QString &text) {
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    static const QRegularExpression number(QStringLiteral("^[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?"));
    return number.match(QString(text).remove(blanks)).captured().toDouble();
}

QChar decimalSeparator() { return generalNumber(1.3).at(1); }

QString dateText(const QDate &date) {
    const QString text = QLocale().toString(date, QLocale::ShortFormat);
    return text.size() <= longestDate ? text : date.toString(Qt::ISODate);
}

QString timeText(const QTime &time) {
    const QLocale locale;
    return locale.toString(time, withoutZone(locale.timeFormat(QLocale::LongFormat)));
}

QString generalDate(const QDateTime &when) { return dateText(when.date()) + QLatin1Char(' ') + timeText(when.time()); }

} // namespace ostrel
