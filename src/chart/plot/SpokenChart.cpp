// SPDX-License-Identifier: MIT
#include "chart/plot/SpokenChart.h"

#include "chart/run/PlainLocale.h"

#include <QStringList>

namespace ostrel {

namespace {

QString axis(const QString &name, float from, float to, int decimals, const QString &unit) {
    const QLocale locale = plainLocale();
    return QStringLiteral("%1 axis from %2 to %3 %4")
        .arg(name, locale.toString(from, 'f', decimals), locale.toString(to, 'f', decimals), unit);
}

} // namespace

QString spoken(const HeadNumbers &numbers) {
    if (numbers.uv.isEmpty())
        return {};
    QString text = QStringLiteral("UV %1, conductivity %2").arg(numbers.uv, numbers.cond);
    if (!numbers.time.isEmpty())
        text += QStringLiteral(", at %1").arg(numbers.time);
    if (!numbers.mark.isEmpty())
        text += QStringLiteral(", mark %1").arg(numbers.mark);
    return text;
}

QString spoken(const ChartData &data, const AxisValues &axes, const HeadNumbers &numbers) {
    QStringList lines{data.title};
    lines << axis(QStringLiteral("UV"), axes.uvMin, axes.uvMax, 3, QStringLiteral("AU"))
          << axis(QStringLiteral("Conductivity"), axes.condMin, axes.condMax, 1, QStringLiteral("mS/cm"))
          << axis(QStringLiteral("Time"), axes.timeMin, axes.timeMax, 2, QStringLiteral("min"));
    if (data.samples.size() == 0)
        lines << QStringLiteral("No samples");
    if (const QString now = spoken(numbers); !now.isEmpty())
        lines << (numbers.live ? QStringLiteral("Now: ") : QStringLiteral("Read out: ")) + now;
    for (const EventMark &mark : data.marks) {
        if (mark.time >= axes.timeMin && mark.time <= axes.timeMax)
            lines << QStringLiteral("Mark %1 at %2 min").arg(mark.label, plainLocale().toString(mark.time, 'f', 2));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace ostrel
