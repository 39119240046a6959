// SPDX-License-Identifier: MIT
#pragma once

#include "archive/Lines.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <vector>

namespace ostrel {

/// One line of information about a file or a log.
struct Fact {
    const char *name;
    const char *key; ///< for scripts
    QJsonValue value;
    QString words; ///< for a person
};

inline Fact textFact(const char *name, const char *key, const QString &value) { return {name, key, value, value}; }

inline Fact countFact(const char *name, const char *key, qint64 number) {
    return {name, key, number, QString::number(number)};
}

/// Writes the facts for a person, one a line.
inline void tellFacts(Lines &out, const std::vector<Fact> &facts) {
    for (const Fact &fact : facts)
        out.tell(QString("%1:").arg(QLatin1String(fact.name)).leftJustified(16) + fact.words);
}

inline QJsonObject objectOf(const std::vector<Fact> &facts) {
    QJsonObject object;
    for (const Fact &fact : facts)
        object[QLatin1String(fact.key)] = fact.value;
    return object;
}

} // namespace ostrel
