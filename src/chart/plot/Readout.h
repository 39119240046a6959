// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"
#include "chart/plot/PlotTheme.h"
#include "chart/run/ChartData.h"

#include <QPainter>
#include <QRegion>

#include <optional>

namespace ostrel {

/// Shows the run at the pointer: a thin line, a dot on each trace, and time, UV and conductivity in a corner of the
/// plot, "-" where there is no finite sample.
class Readout {
public:
    /// At `x`, logical pixels within the plot.
    Readout(const SampleStore &samples, const PlotLayout &layout, double x);

    void paint(QPainter &painter, const PlotTheme &theme) const;
    /// All that `paint` touches.
    QRegion region() const;

    QString timeText() const;
    QString uvText() const;
    QString condText() const;

private:
    std::optional<double> dotOf(const Scale &scale, float value) const;
    QRectF plate() const;
    double columnWidth(const QString &widest) const;

    const PlotLayout &layout_;
    double x_;
    bool known_ = false; // there is a sample at the pointer
    SamplePair sample_{};
};

} // namespace ostrel
