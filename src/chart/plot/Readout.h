// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/HeadNumbers.h"
#include "chart/plot/PlotLayout.h"
#include "chart/plot/PlotTheme.h"
#include "chart/run/ChartData.h"

#include <QPainter>
#include <QRegion>

#include <optional>

namespace ostrel {

/// Shows the run at the pointer: a thin line, and a dot on each trace. Lives no longer than the data and the layout.
class Readout {
public:
    /// At `x`, logical pixels within the plot.
    Readout(const ChartData &data, const PlotLayout &layout, double x);

    void paint(QPainter &painter, const PlotTheme &theme) const;
    /// All that `paint` touches, and the numbers.
    QRegion region() const;

    /// Time at the pointer, values of the nearest sample, and the label of a mark there.
    HeadNumbers numbers() const;

private:
    std::optional<double> dotOf(const Scale &scale, float value) const;
    QString labelNearby() const;

    const ChartData &data_;
    const PlotLayout &layout_;
    double x_;
    std::optional<SamplePair> sample_;
};

} // namespace ostrel
