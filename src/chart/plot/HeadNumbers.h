// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/PlotLayout.h"
#include "chart/plot/PlotTheme.h"
#include "chart/run/SampleStore.h"

#include <QPainter>
#include <QString>

#include <optional>

namespace ostrel {

/// The numbers at the right of the chart's head, as they are shown: of the newest sample, or of the one read out.
struct HeadNumbers {
    QString mark; ///< label of the mark that is read out, too
    QString time;
    QString uv;
    QString cond;
    bool live = false; ///< large, to be read from afar

    /// `minutes` is empty while no run is recorded. "-" stands for a value that is missing or not finite.
    static HeadNumbers of(std::optional<double> minutes, int timeDecimals, const std::optional<SamplePair> &sample);

    /// Each in its column of the head, as far as it has room.
    void paint(QPainter &painter, const PlotLayout &layout, const PlotTheme &theme) const;

    bool operator==(const HeadNumbers &) const = default;
};

} // namespace ostrel
