// SPDX-License-Identifier: MIT
#include "chart/plot/ChartImage.h"
#include "chart/plot/PlotPainter.h"

#include <QPainter>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace ostrel;

namespace {

struct Picture : testing::Test {
    void add(int pairs) {
        for (; pairs > 0; --pairs) {
            const double minute = ChartData::timeOf(data.samples.size());
            data.samples.append({static_cast<float>(1 + std::sin(minute * 9)), static_cast<float>(40 * minute)});
        }
    }
    void draw() { picture.draw(data, view); }
    /// The plot with every sample painted by itself.
    QImage painted() const {
        QImage made(picture.image().size(), QImage::Format_RGB32);
        made.fill(view.theme.ground);
        QPainter painter(&made);
        PlotPainter plot(painter, picture.layout(), view.theme);
        plot.grid();
        plot.trace(CondTrace, data.samples, 1000);
        plot.trace(UvTrace, data.samples, 1000);
        return made.copy(picture.layout().devicePlot());
    }
    QImage drawn() {
        draw();
        return picture.image().copy(picture.layout().devicePlot());
    }
    void expectAsDrawnAnew() const {
        ChartImage fresh;
        fresh.draw(data, view);
        EXPECT_EQ(picture.image(), fresh.image());
    }

    ChartData data;
    ChartView view{{501, 301}, 1, QFont(), PlotTheme::paper(), {}, "Run"};
    ChartImage picture;
};

/// Clear ink of the one has ink of the other within a pixel.
void expectInkBeside(const QImage &one, const QImage &other) {
    QImage near = other.copy();
    QPainter painter(&near);
    painter.setCompositionMode(QPainter::CompositionMode_Darken);
    for (int i = 0; i < 9; ++i)
        painter.drawImage(i % 3 - 1, i / 3 - 1, other);
    int alone = 0;
    for (int i = 0; i < one.width() * one.height(); ++i) {
        const QPoint place(i % one.width(), i / one.width());
        alone += qGray(one.pixel(place)) < 90 && qGray(near.pixel(place)) > 200;
    }
    EXPECT_EQ(alone, 0);
}

TEST_F(Picture, liesWithinAPixelOfEverySamplePaintedByItself) {
    const QImage grid = drawn();
    EXPECT_EQ(grid, painted());
    view.theme.uv = Qt::black;
    std::mt19937 random{3};
    std::normal_distribution<float> noise(0, 0.01F);
    for (int i = 0; i < 60000; ++i) {
        const double peaks = std::pow(std::sin(i / samplesPerMinute * 2), 8) * 1.7;
        const float missing = i % 7 == 0 ? NAN : INFINITY;
        data.samples.append({i % 700 < 30 && i > 700 ? missing : static_cast<float>(peaks) + noise(random), NAN});
    }
    for (int i = 0; i < 20000; ++i) // columns that have no value in common
        data.samples.append({i / 200 % 2 == 0 ? 0.0F : 1.5F, NAN});
    for (const auto &[from, to] :
         {std::pair{0.9F, 1.2F}, {0.0F, 10.0F}, {3.3F, 30.0F}, {0.0F, 199.0F}, {-5.0F, 210.0F}, {200.0F, 266.0F}}) {
        SCOPED_TRACE(to);
        view.axes.timeMin = from;
        view.axes.timeMax = to;
        const QImage traces = drawn();
        expectInkBeside(traces, painted());
        expectInkBeside(painted(), traces);
    }
}

TEST_F(Picture, newDataDrawnOnGiveWhatAFullDrawingGives) {
    for (const double ratio : {1.0, 1.5, 2.0})
        for (const float minutes : {0.5F, 10.0F, 500.0F}) {
            SCOPED_TRACE(minutes);
            data = {};
            view.pixelRatio = ratio;
            view.axes.timeMax = minutes;
            draw();
            for (const int pairs : {1, 4, 0, 7, 300, 4, 4, 4, 2000, 4}) {
                add(pairs);
                picture.drawNew(data);
            }
            expectAsDrawnAnew();
        }
}

TEST_F(Picture, aChangeOfViewLeavesNothingOfTheOldOne) {
    add(3000);
    draw();
    const std::function<void()> changes[] = {
        [&] { view.axes.timeMin = 3.3F; }, [&] { view.axes.uvMax = 1; },
        [&] { view.size = {640, 200}; },   [&] { view.theme = PlotTheme::of(QPalette(Qt::darkGray)); },
        [&] { view.title.clear(); },
    };
    for (const auto &change : changes) {
        change();
        draw();
        expectAsDrawnAnew();
    }
}

TEST_F(Picture, newDataTouchOnlyTheirOwnStrip) {
    add(1500); // half of the ten minutes
    draw();
    add(4);
    const QRect strip = picture.regionOfNews(data);
    EXPECT_LT(strip.width(), 8);
    const QImage before = picture.image().copy();
    picture.drawNew(data);
    QImage after = picture.image().copy();
    EXPECT_NE(before, after);
    QPainter(&after).drawImage(strip, before, strip);
    EXPECT_EQ(before, after);
}

} // namespace
