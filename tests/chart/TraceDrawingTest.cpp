// SPDX-License-Identifier: MIT
#include "chart/plot/ChartImage.h"
#include "chart/plot/TraceColumns.h"
#include "chart/plot/TraceRaster.h"
#include "fakes/AllocationProbe.h"

#include <QPainter>
#include <QPainterPath>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

constexpr float gap = std::numeric_limits<float>::quiet_NaN();
constexpr float penRadius = 0.75F;

/// A plot without frame: black UV on white; conductivity has no samples unless a case gives it some.
struct Drawing : testing::Test {
    Drawing() {
        raster.setPlot(plot, qRgb(0, 0, 0), qRgb(255, 0, 0));
        raster.setGround(std::vector<QRgb>(plot.width(), qRgb(255, 255, 255)), std::vector<QRgb>(plot.height(), 0));
        raster.paintGround(image);
        raster.setPlot(plot, qRgb(0, 0, 0), qRgb(255, 0, 0));
    }
    /// With noise, and with stretches without a number.
    void peaks(int pairs) {
        std::normal_distribution<float> spread(0, 0.01F);
        for (int i = 0; i < pairs; ++i) {
            const double wave = std::pow(std::sin(i / samplesPerMinute * 2), 8) * 1.7;
            const float missing = i % 7 == 0 ? gap : Extent::infinity;
            run.append({i % 700 < 30 && i > 700 ? missing : static_cast<float>(wave) + spread(random), gap});
        }
    }
    void show(float from, float to) {
        axes.timeMin = from;
        axes.timeMax = to;
        columns.setPlot(axes, plot.width(), plot.height(), penRadius);
    }
    const QImage &draw() {
        columns.reduce(run, 0, plot.width());
        raster.draw(image, columns, 0, plot.width());
        return image;
    }
    /// Every sample, painted by Qt with a round pen.
    QImage simple() const {
        QImage made(image.size(), QImage::Format_RGB32);
        made.fill(Qt::white);
        QPainter painter(&made);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::black, 2 * penRadius, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const Scale time(axes.timeMin, axes.timeMax, 0, plot.width());
        const Scale uv(axes.uvMin, axes.uvMax, plot.height(), 0);
        QPolygonF line;
        for (qint64 i = 0; i <= run.size(); ++i) {
            if (i < run.size() && std::isfinite(run.at(i).uv)) {
                line << QPointF(time.place(static_cast<double>(i) / samplesPerMinute), uv.place(run.at(i).uv));
            } else if (!line.isEmpty()) {
                painter.drawPolyline(line);
                line.clear();
            }
        }
        return made;
    }
    /// Clear ink of the one has ink of the other within a pixel, and the other way round.
    static void expectWithinAPixel(const QImage &one, const QImage &other) {
        int off = 0;
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x) {
                const bool missing = qGray(one.pixel(x, y)) < 90 && darkestAround(other, x, y) > 200;
                const bool tooMuch = qGray(other.pixel(x, y)) < 90 && darkestAround(one, x, y) > 200;
                off += missing || tooMuch;
            }
        EXPECT_EQ(off, 0);
    }
    static int darkestAround(const QImage &image, int x, int y) {
        int grey = 255;
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                if (image.valid(x + dx, y + dy))
                    grey = std::min(grey, qGray(image.pixel(x + dx, y + dy)));
        return grey;
    }

    QRect plot{0, 0, 413, 200};
    QImage image{413, 200, QImage::Format_RGB32};
    AxisValues axes;
    SampleStore run;
    TraceColumns columns;
    TraceRaster raster;
    std::mt19937 random{3};
};

TEST_F(Drawing, liesWithinAPixelOfEverySampleDrawnByItself) {
    peaks(60000);
    for (const auto &[from, to] :
         {std::pair{0.9F, 1.2F}, {0.0F, 10.0F}, {3.3F, 40.0F}, {0.0F, 199.0F}, {-5.0F, 210.0F}}) {
        show(from, to);
        SCOPED_TRACE(to);
        expectWithinAPixel(draw(), simple());
    }
}

TEST_F(Drawing, joinsColumnsThatHaveNoValueInCommon) {
    constexpr int inOne = 200;
    for (int i = 0; i < plot.width() * inOne; ++i)
        run.append({i / inOne % 2 ? 1.5F : 0.0F, gap});
    show(0, static_cast<float>(plot.width() * inOne / samplesPerMinute));
    draw();
    for (int column = 1; column < plot.width() - 1; ++column)
        ASSERT_EQ(qGray(image.pixel(column, 100)), 0) << column;
}

ChartView viewOf(double ratio) {
    return {.size = {501, 301},
            .pixelRatio = ratio,
            .font = QFont(),
            .theme = PlotTheme::paper(),
            .axes = {},
            .title = QStringLiteral("Run")};
}

struct Picture : testing::Test {
    void add(int pairs) {
        for (int i = 0; i < pairs; ++i) {
            const double minute = static_cast<double>(data.samples.size()) / samplesPerMinute;
            data.samples.append({static_cast<float>(1 + std::sin(minute * 9)), static_cast<float>(40 * minute)});
        }
    }
    QImage anew(const ChartView &view) const {
        ChartImage fresh;
        fresh.draw(data, view);
        return fresh.image();
    }

    ChartData data;
    ChartImage picture;
};

TEST_F(Picture, newDataDrawnOnGiveWhatAFullDrawingGives) {
    for (const double ratio : {1.0, 1.5, 2.0})
        for (const float minutes : {0.5F, 10.0F, 500.0F}) {
            data = {};
            ChartView view = viewOf(ratio);
            view.axes.timeMax = minutes;
            picture.draw(data, view);
            for (const int pairs : {1, 4, 0, 7, 300, 4, 4, 4, 2000, 4}) {
                add(pairs);
                picture.drawNew(data);
            }
            EXPECT_EQ(picture.image(), anew(view)) << minutes << " minutes, ratio " << ratio;
        }
}

TEST_F(Picture, aChangeOfViewLeavesNothingOfTheOldOne) {
    add(3000);
    ChartView view = viewOf(1);
    picture.draw(data, view);
    const auto expectClean = [&] {
        picture.draw(data, view);
        EXPECT_EQ(picture.image(), anew(view));
    };
    view.axes.timeMin = 3.3F;
    expectClean();
    view.axes.uvMax = 1;
    expectClean();
    view.size = {640, 200};
    expectClean();
    view.theme = PlotTheme::of(QPalette(Qt::darkGray));
    expectClean();
    view.title.clear();
    expectClean();
}

TEST_F(Picture, newDataTouchOnlyTheirOwnStrip) {
    add(1500); // half of the ten minutes
    ChartView view = viewOf(1);
    picture.draw(data, view);
    EXPECT_TRUE(picture.regionOfNews(data).isEmpty());
    add(4);
    const QRect strip = picture.regionOfNews(data);
    EXPECT_LT(strip.width(), 8);
    const QImage before = picture.image().copy();
    picture.drawNew(data);
    QImage after = picture.image().copy();
    EXPECT_NE(before, after);
    QPainter(&after).drawImage(strip, before, strip);
    EXPECT_EQ(before, after);
    view.axes.timeMin = 6;
    picture.draw(data, view);
    add(4);
    EXPECT_TRUE(picture.regionOfNews(data).isEmpty());
}

TEST_F(Picture, aRedrawWithTheSameAxesAllocatesNothing) {
    add(60000);
    const ChartView view = viewOf(1);
    picture.draw(data, view);
    const std::size_t before = AllocationProbe::count();
    picture.draw(data, view);
    EXPECT_EQ(AllocationProbe::count(), before);
}

} // namespace
