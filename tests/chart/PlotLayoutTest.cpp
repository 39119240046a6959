// SPDX-License-Identifier: MIT
#include "chart/plot/PlotLayout.h"

#include "chart/plot/MarkLayout.h"
#include "chart/plot/PlotTheme.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

void expectApart(const std::vector<QRectF> &boxes, const QRectF &within, const std::string &where) {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_TRUE(within.contains(boxes[i])) << where;
        for (std::size_t j = 0; j < i; ++j)
            ASSERT_FALSE(boxes[i].intersects(boxes[j])) << where;
    }
}

std::vector<QRectF> labelsOf(const PlotLayout &layout) {
    std::vector<QRectF> boxes;
    for (const auto *ticks : {&layout.uvTicks, &layout.condTicks, &layout.timeTicks})
        for (const Tick &tick : *ticks)
            if (!tick.label.isEmpty())
                boxes.push_back(tick.box);
    for (const QRectF &title : {layout.titleBox, layout.uvTitleBox, layout.condTitleBox, layout.timeTitleBox})
        if (!title.isEmpty())
            boxes.push_back(title);
    return boxes;
}

std::vector<AxisValues> axesToTry() {
    return {{},
            {-0.0001F, 0.001F, 499.5F, 500, 32757, 32767},
            {1.2345F, 1.2346F, 123.45F, 123.46F, 31999.99F, 32000},
            {-2, -1.999F, 0, 0.5F, 0, 32767},
            {-2, 2, 0.1F, 77.7F, 0.013F, 0.023F},
            {1, 1, 5, 4, 7, 7}}; // no axis at all
}

TEST(PlotLayout, labelsNeverTouchAtAnySizeScaleOrFont) {
    for (const int fontSize : {7, 13, 29})
        for (const double ratio : {1.0, 1.5, 2.0})
            for (const QSizeF size : {QSizeF(1, 1), QSizeF(60, 40), QSizeF(180, 120), QSizeF(333, 222),
                                      QSizeF(1280, 720), QSizeF(3000, 300), QSizeF(200, 1500)})
                for (const AxisValues &axes : axesToTry()) {
                    QFont font;
                    font.setPixelSize(fontSize);
                    const auto layout = PlotLayout::of(size, ratio, axes, font, QStringLiteral("A run with a title"));
                    expectApart(labelsOf(layout), QRectF(QPointF(), size),
                                std::to_string(size.width()) + " wide, font " + std::to_string(fontSize));
                    EXPECT_EQ(layout.plot.left() * ratio, std::round(layout.plot.left() * ratio));
                }
}

QStringList uvLabels(float from, float to) {
    QStringList labels;
    for (const Tick &tick : PlotLayout::of({600, 300}, 1, {.uvMin = from, .uvMax = to}, QFont(), {}).uvTicks)
        if (tick.major)
            labels << tick.label;
    return labels;
}

TEST(PlotLayout, ticksStandAtOneTwoFive) {
    EXPECT_EQ(uvLabels(-0.2F, 2.0F).join(QLatin1Char(' ')), QStringLiteral("0.0 0.5 1.0 1.5 2.0"));
    EXPECT_EQ(uvLabels(-0.01F, 0.1F).join(QLatin1Char(' ')), QStringLiteral("0.00 0.02 0.04 0.06 0.08 0.10"));
}

struct Marks : testing::Test {
    std::vector<PlacedMark> placed() const { return placeMarks(marks, layout, PlotTheme::paper()); }

    PlotLayout layout = PlotLayout::of({800, 400}, 1, {}, QFont(), {});
    std::vector<EventMark> marks;
};

TEST_F(Marks, standOnTheTimeAxisUpOrDownAndOnlyWhereItShowsThem) {
    marks = {{QStringLiteral("S"), 0xFFFF00, 50, 2},
             {QStringLiteral("F"), 0x0000FF, -10, 5},
             {QStringLiteral("E"), 0, 40, 11}};
    const auto seen = placed();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].bar.bottom(), layout.plot.bottom());
    EXPECT_EQ(seen[0].bar.height(), 50);
    EXPECT_NEAR(seen[0].bar.center().x(), layout.time.place(2), 1);
    EXPECT_EQ(seen[1].bar.top(), layout.plot.bottom());
    EXPECT_EQ(seen[1].bar.height(), 10);
}

TEST_F(Marks, keepTheirLabelsApartWhereTheyCrowd) {
    for (int i = 0; i < 400; ++i)
        marks.push_back({QString::number(i), 0x00FF00, 10, 4 + static_cast<float>(i) / 200});
    marks.push_back({QStringLiteral("M"), 0xFFFF00, 60, 5});
    std::vector<QRectF> boxes;
    bool tallest = false;
    for (const PlacedMark &mark : placed()) {
        if (!mark.box.isEmpty())
            boxes.push_back(mark.box);
        tallest |= mark.label == QLatin1String("M") && !mark.box.isEmpty();
    }
    EXPECT_TRUE(tallest);
    EXPECT_GT(boxes.size(), 10U);
    expectApart(boxes, layout.plot, "crowd");
}

TEST(PlotTheme, inkIsLegibleOnLightAndDarkAndKeepsItsHue) {
    for (const QColor &ground : {QColor(Qt::white), QColor(0x1e, 0x20, 0x24), QColor(0x80, 0x80, 0x80)})
        for (const qint32 bgr : {0xFFFF00, 0x00FF00, 0x0000FF, 0xFFFFFF, 0}) {
            const QColor made = legible(colourFromBgr(bgr), ground, 4.5);
            EXPECT_GE(contrast(made, ground), 4.5);
        }
    const QColor cyan = legible(colourFromBgr(0xFFFF00), Qt::white, 4.5);
    EXPECT_EQ(cyan.green(), cyan.blue());
    EXPECT_GT(cyan.green(), cyan.red());
    EXPECT_EQ(colourFromBgr(0x0000FF), QColor(Qt::red));
}

} // namespace
