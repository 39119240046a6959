// SPDX-License-Identifier: MIT
#include "archive/OneLine.h"

#include "chart/run/TextLines.h"

namespace ostrel {

QString oneLine(const QString &text) {
    QString line = linesOf(text).join(QLatin1Char(' '));
    for (qsizetype i = 0; i < line.size(); ++i) {
        QChar &c = line[i];
        if (c == QLatin1Char('\t') || c.category() == QChar::Other_Control)
            c = QLatin1Char(' ');
        else if (c.isHighSurrogate() && i + 1 < line.size() && line.at(i + 1).isLowSurrogate())
            ++i;
        else if (c.isSurrogate() || c >= QChar(0xfffe))
            c = QChar::ReplacementCharacter;
    }
    return line;
}

} // namespace ostrel
