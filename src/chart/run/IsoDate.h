// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace ostrel {

/// A moment as files, reports and tables write it: 2026-11-21T07:31:49+01:00, in every locale. The offset is that of
/// `when`'s own time zone.
inline QString isoDate(const QDateTime &when) {
    const QString text = when.toOffsetFromUtc(when.offsetFromUtc()).toString(Qt::ISODate);
    return text.endsWith(QLatin1Char('Z')) ? text.chopped(1) + QLatin1String("+00:00") : text;
}

/// The same as other formats want it: 20261121073149+0100.
inline QString compactDate(const QDateTime &when) {
    constexpr int offset = 6; // characters, with a colon
    return when.toString(QStringLiteral("yyyyMMddHHmmss")) + isoDate(when).right(offset).remove(QLatin1Char(':'));
}

} // namespace ostrel
