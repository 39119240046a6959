// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/MarkLayout.h"
#include "chart/plot/OffScale.h"
#include "chart/plot/PlotLayout.h"
#include "chart/plot/PlotTheme.h"
#include "chart/plot/TraceRaster.h"
#include "chart/run/ChartData.h"

#include <QFont>
#include <QImage>

#include <vector>

namespace ostrel {

/// How a chart should look on the screen.
struct ChartView {
    QSize size; ///< logical pixels
    qreal pixelRatio = 1;
    QFont font;
    PlotTheme theme;
    AxisValues axes;
    QString title;

    bool operator==(const ChartView &) const = default;
};

/// The picture of a visible chart: frame, grid and traces. Marks are placed here, but not painted here: they lie above
/// the picture. Parts that stay the same from one drawing to the next are not painted again.
class ChartImage {
public:
    bool isNull() const { return image_.isNull(); }
    /// Frees the memory, for a chart that is hidden.
    void drop() { *this = ChartImage(); }

    /// Draws the whole chart as `view` says.
    void draw(const ChartData &data, const ChartView &view);
    /// Draws what was added since the last drawing on top of it. A picture must be there.
    void drawNew(const ChartData &data);
    /// The part of the chart, in logical pixels, that drawNew would change; empty for none.
    QRect regionOfNews(const ChartData &data) const;

    const QImage &image() const { return image_; }
    const ChartView &view() const { return view_; }
    const PlotLayout &layout() const { return layout_; }
    const std::vector<PlacedMark> &marks() const { return marks_; }
    /// Where traces leave the scale.
    std::vector<OffScale> offScale() const { return placeOffScale(columns_, layout_); }

private:
    void paintAll();
    void moveTimeAxis();
    void setGround();
    void placeNewMarks(const ChartData &data);
    bool labelWithin(double left, double right) const;
    bool leavesScale(const ChartData &data, qint64 from) const;
    std::pair<double, double> placesOf(int firstColumn, int endColumn) const;

    ChartView view_;
    PlotLayout layout_;
    QImage image_;
    TraceColumns columns_;
    TraceRaster raster_;
    std::vector<PlacedMark> marks_;
    qint64 drawnSamples_ = 0;
    std::size_t drawnMarks_ = 0;
};

} // namespace ostrel
