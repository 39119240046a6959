// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"

#include <QCommandLineParser>

#include <optional>

namespace ostrel {

/// The value of an option that is a number; the command ends when it is none, or out of bounds.
double numberOf(const QCommandLineParser &line, const char *option, double least, double most);

/// A part of a run, in minutes.
struct Stretch {
    float from = 0;
    std::optional<float> to; ///< without it, all that follows
};

void declareStretch(QCommandLineParser &line);
Stretch stretchAsked(const QCommandLineParser &line);
/// Ends the command when the stretch begins behind the end of the run, which is in the file `path`.
void beginWithin(const Stretch &stretch, const QString &path, const ChartData &run);

} // namespace ostrel
