// SPDX-License-Identifier: MIT
#include "chart/plot/ChartImage.h"
#include "chart/plot/MarkLayout.h"
#include "chart/plot/PlotLayout.h"
#include "chart/plot/PlotPainter.h"
#include "chart/plot/PlotTheme.h"
#include "chart/plot/Readout.h"
#include "chart/plot/TracePath.h"

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

TEST_F(Picture, aSteepFlankOfALongRunWeighsAsMuchAsAFlatLine) {
    view.axes.timeMax = 500;
    const QImage grid = drawn();
    for (int i = 0; i < 150000; ++i)
        data.samples.append({i < 80000 ? 0.0F : 1.5F, NAN});
    const QImage traces = drawn();
    const int row = static_cast<int>(grid.height() * (2 - 0.77) / 2.2); // between two grid lines
    const double full = 255 - qGray(view.theme.uv.rgb());
    double ink = 0;
    for (int x = 0; x < grid.width(); ++x)
        ink += (qGray(grid.pixel(x, row)) - qGray(traces.pixel(x, row))) / full;
    EXPECT_NEAR(ink, 2 * tracePenRadius, 0.1);
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
    EXPECT_LE(strip.width(), 8);
    const QImage before = picture.image().copy();
    picture.drawNew(data);
    QImage after = picture.image().copy();
    EXPECT_NE(before, after);
    QPainter(&after).drawImage(strip, before, strip);
    EXPECT_EQ(before, after);
}

TEST_F(Picture, theReadOutTellsTheNearestSampleAndLeavesNothingOutsideItsRegion) {
    data.samples.append({0.01254F, NAN});
    data.marks.push_back({"S", 0xFFFF00, 50, 0});
    draw();
    const PlotLayout &layout = picture.layout();
    for (const auto &[minute, told] :
         {std::pair{0.0, "S 0.00 min 0.0125 AU - mS/cm"}, {5.0, " 5.00 min - AU - mS/cm"}}) {
        const Readout readout(data, layout, layout.time.place(minute));
        const HeadNumbers numbers = readout.numbers();
        EXPECT_EQ((QStringList{numbers.mark, numbers.time, numbers.uv, numbers.cond}.join(' ')), told);
        QImage painted = picture.image().copy();
        QPainter painter(&painted);
        readout.paint(painter, view.theme);
        numbers.paint(painter, layout, view.theme);
        EXPECT_NE(painted, picture.image());
        painter.setClipRegion(readout.region());
        painter.drawImage(0, 0, picture.image());
        EXPECT_EQ(painted, picture.image());
    }
}

void expectApart(const std::vector<QRectF> &boxes, const QRectF &within) {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_TRUE(boxes[i].isEmpty() || within.contains(boxes[i]));
        for (std::size_t j = 0; j < i; ++j)
            ASSERT_FALSE(boxes[i].intersects(boxes[j])); // as no empty one does
    }
}

TEST(PlotLayout, labelsNeverTouchAtAnySizeScaleOrFont) {
    // clang-format off
    constexpr AxisValues axesToTry[] = {
        {},
        {-0.0001F, 0.001F, 499.5F, 500, 32757, 32767},
        {1.2345F, 1.2346F, 123.45F, 123.46F, 31999.99F, 32000},
        {-2, -1.999F, 0, 0.5F, 0, 32767},
        {-2, 2, 0.1F, 77.7F, 0.013F, 0.023F},
        {1, 1, 5, 4, 7, 7}}; // no axis at all
    constexpr QSizeF sizes[] = {{1, 1}, {60, 40}, {180, 120}, {333, 222}, {1280, 720}, {3000, 300}, {200, 1500}};
    // clang-format on
    for (const auto &[fontSize, ratio] : {std::pair(7, 1.0), {7, 1.5}, {13, 1.0}, {13, 2.0}, {29, 1.5}, {29, 2.0}})
        for (const QSizeF &size : sizes)
            for (const AxisValues &axes : axesToTry) {
                SCOPED_TRACE(testing::Message() << size.width() << " wide, font " << fontSize);
                QFont font;
                font.setPixelSize(fontSize);
                font.setItalic(true);
                const auto layout = PlotLayout::of(size, ratio, axes, font, "A run with a title");
                EXPECT_EQ(layout.font, font);
                std::vector boxes(layout.headColumns.begin(), layout.headColumns.end());
                boxes.insert(boxes.end(),
                             {layout.titleBox, layout.uvTitleBox, layout.condTitleBox, layout.timeTitleBox});
                for (const auto *ticks : {&layout.uvTicks, &layout.condTicks, &layout.timeTicks})
                    for (const Tick &tick : *ticks)
                        boxes.push_back(tick.label.isEmpty() ? QRectF() : tick.box);
                expectApart(boxes, QRectF(QPointF(), size));
                for (const QRectF &box : boxes)
                    ASSERT_FALSE(box.intersects(layout.plot));
                EXPECT_EQ(layout.plot.left() * ratio, std::round(layout.plot.left() * ratio));
            }
}

TEST(PlotLayout, countsOverThreeHoursInPartsOfAnHourAndOverADayInHours) {
    const auto labels = [](float minutes) {
        const PlotLayout layout = PlotLayout::of({640, 300}, 1, {.timeMax = minutes}, QFont(), {});
        QStringList texts{layout.timeTitle};
        for (const Tick &tick : layout.timeTicks) {
            if (!tick.label.isEmpty())
                texts << tick.label;
        }
        return texts.join(' ');
    };
    EXPECT_EQ(labels(170), "Time (min) 0 50 100 150");
    EXPECT_EQ(labels(200), "Time (min) 0 30 60 90 120 150 180");
    EXPECT_EQ(labels(1440), "Time (min) 0 180 360 540 720 900 1080 1260 1440");
    EXPECT_EQ(labels(2000), "Time (h) 0 4 8 12 16 20 24 28 32");
    EXPECT_EQ(labels(40000), "Time (h) 0 100 200 300 400 500 600");
}

TEST(PlotLayout, ticksStandAtOneTwoFive) {
    QString labels;
    for (const Tick &tick : PlotLayout::of({600, 300}, 1, {.uvMin = -0.01F, .uvMax = 0.1F}, QFont(), {}).uvTicks)
        labels += tick.label + u' ';
    EXPECT_EQ(labels.simplified(), "0.00 0.02 0.04 0.06 0.08 0.10");
}

struct Marks : testing::Test {
    std::vector<PlacedMark> placed() const { return placeMarks(marks, layout, PlotTheme::paper(), traces); }

    PlotLayout layout = PlotLayout::of({800, 400}, 1, {}, QFont(), {});
    TraceColumns traces;
    std::vector<EventMark> marks;
};

TEST_F(Marks, standOnTheTimeAxisUpOrDownAndOnlyWhereItShowsThem) {
    marks = {{"S", 0xFFFF00, 50, 2}, {"F", 0x0000FF, -10, 5}, {"E", 0, 40, 11}};
    const auto seen = placed();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].bar.bottom(), layout.plot.bottom());
    EXPECT_EQ(seen[0].bar.height(), 50);
    EXPECT_NEAR(seen[0].bar.center().x(), layout.time.place(2), 1);
    EXPECT_EQ(seen[1].bar.top(), layout.plot.bottom());
}

TEST_F(Marks, ofDifferentKindsAtOnePlaceAreAllSeenAndLabelsStandOffTheTraces) {
    marks = {{"E", 0xFFFF00, 40, 5}, {"S", 0xFFFF00, 50, 5.001F}, {"7", 0x00FF00, 10, 5}, {"8", 0x00FF00, 10, 5}};
    auto seen = placed();
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].label, "E 7 S");
    EXPECT_TRUE(seen[0].bar.height() > seen[1].bar.height() && seen[1].bar.height() > seen[2].bar.height());
    for (const PlacedMark &mark : seen)
        EXPECT_GE(contrast(mark.stroke, Qt::white), 3);

    SampleStore samples; // UV runs through the place above the marks
    const QRectF above = seen[0].box;
    for (int i = 0; i < 3000; ++i)
        samples.append({static_cast<float>(layout.uv.value(above.center().y())), 400});
    traces = tracesOn(layout, samples);
    seen = placed();
    EXPECT_FALSE(seen[0].overTrace);
    EXPECT_FALSE(seen[0].box.intersects(above));
    EXPECT_FALSE(seen[0].box.isEmpty());
}

TEST_F(Picture, aSampleAloneIsADotAndAnArrowTellsWhereATraceLeavesTheScale) {
    data.samples.append({1.07F, NAN}); // between two lines of the grid
    draw();
    const QPointF place(picture.layout().time.place(0), picture.layout().uv.place(1.07));
    EXPECT_NE(picture.image().pixel((place + QPointF(1, 0)).toPoint()), view.theme.ground.rgb());
    EXPECT_TRUE(picture.offScale().empty());
    for (int i = 1; i < 3000; ++i)
        data.samples.append({i > 900 && i < 1500 ? 3.0F : 1.0F, i < 2400 ? 20.0F : -7.0F});
    draw();
    const auto signs = picture.offScale();
    ASSERT_EQ(signs.size(), 2U);
    EXPECT_TRUE(signs[0].trace == CondTrace && !signs[0].above && signs[1].trace == UvTrace && signs[1].above);
    EXPECT_NEAR(signs[1].place.x(), picture.layout().time.place(3), 2);
}

TEST_F(Marks, keepTheirLabelsApartWhereTheyCrowd) {
    for (int i = 0; i < 400; ++i)
        marks.push_back({QString::number(i), 0x00FF00, 10, 4 + static_cast<float>(i) / 200});
    marks.push_back({"M", 0xFFFF00, 60, 5});
    std::vector<QRectF> boxes;
    for (const PlacedMark &mark : placed()) {
        boxes.push_back(mark.box);
        EXPECT_TRUE(mark.label != "M" || !mark.box.isEmpty()); // the tallest
    }
    EXPECT_GT(std::count_if(boxes.begin(), boxes.end(), [](const QRectF &box) { return !box.isEmpty(); }), 10);
    expectApart(boxes, layout.plot);
}

TEST(PlotTheme, inkIsLegibleOnLightAndDarkAndKeepsItsHue) {
    for (const QRgb ground : {0xffffffU, 0xff1e2024U, 0xff808080U})
        for (const qint32 bgr : {0xFFFF00, 0x00FF00, 0x0000FF, 0xFFFFFF, 0})
            EXPECT_GE(contrast(legible(colourFromBgr(bgr), QColor(ground), 4.5), QColor(ground)), 4.5);
    const QColor blue = legible(colourFromBgr(0xFF0000), Qt::white, 4.5);
    EXPECT_TRUE(blue.blue() > blue.red() && blue.red() == blue.green());
}

} // namespace
