// SPDX-License-Identifier: MIT
#include "archive/Stretch.h"

#include "archive/RunFile.h"

namespace ostrel {

double numberOf(const QCommandLineParser &line, const char *option, double least, double most) {
    bool good = false;
    const double value = line.value(option).toDouble(&good);
    if (!good || !(value >= least && value <= most))
        throw EarlyEnd{Misused, QString("--%1 is a number from %2 to %3").arg(option).arg(least).arg(most, 0, 'g', 7)};
    return value;
}

void declareStretch(QCommandLineParser &line) {
    line.addOptions({
        {"from", "First minute (0).", "minutes", "0"},
        {"to", "Last minute (that of the last sample).", "minutes"},
    });
}

Stretch stretchAsked(const QCommandLineParser &line) {
    constexpr double longest = 1000000;
    Stretch stretch{static_cast<float>(numberOf(line, "from", 0, longest)), std::nullopt};
    if (line.isSet("to"))
        stretch.to = static_cast<float>(numberOf(line, "to", 0, longest));
    if (stretch.to && stretch.from > *stretch.to)
        throw EarlyEnd{Misused, "--from is behind --to"};
    return stretch;
}

void beginWithin(const Stretch &stretch, const QString &path, const ChartData &run) {
    if (stretch.from > run.lastTime())
        throw EarlyEnd{Misused,
                       path + ": --from is behind the end of the run, which takes " + duration(run.lastTime())};
}

} // namespace ostrel
