// SPDX-License-Identifier: MIT
#include "chart/run/TextLines.h"

#include <QRegularExpression>

#include <algorithm>

namespace ostrel {

QStringList linesOf(const QString &text) {
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|[\n\r\f\v\\x{85}\\x{2028}\\x{2029}]"));
    static const QRegularExpression control(QStringLiteral("[\\x{00}-\\x{08}\\x{0e}-\\x{1f}\\x{7f}]"));
    QStringList lines = text.split(lineEnd);
    lines.replaceInStrings(control, QStringLiteral(" "));
    while (!lines.isEmpty() && lines.last().trimmed().isEmpty())
        lines.removeLast();
    return lines;
}

QStringList methodLines(const std::vector<MethodText> &texts) {
    std::vector<const MethodText *> order;
    order.reserve(texts.size());
    for (const MethodText &text : texts)
        order.push_back(&text);
    std::stable_sort(order.begin(), order.end(),
                     [](const MethodText *a, const MethodText *b) { return a->time < b->time; });
    QStringList lines;
    for (const MethodText *text : order) {
        if (!lines.isEmpty())
            lines << QString();
        lines << linesOf(text->text);
    }
    return lines;
}

} // namespace ostrel
