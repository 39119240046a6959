// SPDX-License-Identifier: MIT
#include "chart/run/TextLines.h"

#include <algorithm>

namespace ostrel {

namespace {

bool endsLine(QChar c) { return QStringLiteral("\n\r\f\v\u0085\u2028\u2029").contains(c); }

bool isControl(QChar c) { return (c < QLatin1Char(' ') && c != QLatin1Char('\t')) || c == QChar(0x7f); }

} // namespace

// Character by character: a regular expression finds nothing at all in a text that has half a surrogate pair.
QStringList linesOf(const QString &text) {
    QStringList lines{QString()};
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (!endsLine(c))
            lines.last() += isControl(c) ? QLatin1Char(' ') : c;
        else if (c != QLatin1Char('\n') || i == 0 || text[i - 1] != QLatin1Char('\r'))
            lines << QString();
    }
    while (!lines.isEmpty() && lines.last().trimmed().isEmpty())
        lines.removeLast();
    return lines;
}

QString oneLine(const QString &text) {
    QString line = linesOf(text).join(QLatin1Char(' '));
    for (qsizetype i = 0; i < line.size(); ++i) {
        QChar &c = line[i];
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char(' ');
        else if (c.isHighSurrogate() && i + 1 < line.size() && line.at(i + 1).isLowSurrogate())
            ++i;
        else if (c.isSurrogate() || c >= QChar(0xfffe))
            c = QChar::ReplacementCharacter;
    }
    return line;
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
