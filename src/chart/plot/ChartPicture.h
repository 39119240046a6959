// SPDX-License-Identifier: MIT
#pragma once

#include "chart/plot/ChartImage.h"
#include "chart/run/ChartData.h"

#include <QImage>
#include <QPainter>

namespace ostrel {

/// A chart as a picture of its own, for other programs.
QImage pictureOf(const ChartData &data, const ChartView &view);

/// The same as lines and texts, `view.size` large.
void paintPicture(QPainter &painter, const ChartData &data, const ChartView &view);

} // namespace ostrel
