// SPDX-License-Identifier: MIT
#include "chart/Quillchart.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

/// A shown chart that the operator works on.
struct Operated : testing::Test {
    Operated() {
        chart.resize(800, 400);
        chart.show();
        QObject::connect(
            &chart, &Quillchart::Zoomed,
            [this](qint16 index, float from, float to, float uvMin, float uvMax, float condMin, float condMax) {
                EXPECT_EQ(axes(), (AxisValues{uvMin, uvMax, condMin, condMax, from, to}));
                EXPECT_EQ(index, 3);
                ++zooms;
            });
        QObject::connect(&chart, &Quillchart::Unzoomed, [this] { axesLeftTo.push_back(axes()); });
        QTest::qWait(20); // it is painted
    }
    void begin(QPoint from, QPoint to) {
        QTest::mousePress(&chart, Qt::LeftButton, {}, from);
        QTest::mouseMove(&chart, to);
    }
    void drag(QPoint from = {300, 100}, QPoint to = {500, 250}) {
        begin(from, (from + to) / 2); // a quick hand lets go far from its last move
        QTest::mouseRelease(&chart, Qt::LeftButton, {}, to);
        QTest::qWait(20); // it is painted
    }
    AxisValues axes() const { return chart.run().axes(); }

    Quillchart chart{3};
    int zooms = 0;
    std::vector<AxisValues> axesLeftTo;
};

TEST_F(Operated, aRectangleZoomsAllThreeAxesAndADoubleClickLeaves) {
    drag();
    EXPECT_GT(chart.TimeAxisMin(), 2.5F);
    EXPECT_LT(chart.TimeAxisMax(), 7.0F);
    EXPECT_NEAR((chart.UvAxisMax() - chart.UvAxisMin()) / 2.2, (chart.CondAxisMax() - chart.CondAxisMin()) / 500, 1e-4);
    drag();                  // deeper
    chart.setTimeAxisMax(9); // the window scrolls in the zoom
    for (int i = 0; i < 2; ++i)
        QTest::mouseDClick(&chart, Qt::LeftButton, {}, {400, 200});
    EXPECT_EQ(zooms, 2);
    EXPECT_EQ(axesLeftTo, std::vector{AxisValues()});
}

TEST_F(Operated, aFlatRectangleZoomsTimeAloneAndASteepOneTheValues) {
    drag({300, 100}, {500, 103});
    const AxisValues flat = axes();
    EXPECT_EQ(flat, (AxisValues{.timeMin = flat.timeMin, .timeMax = flat.timeMax}));
    EXPECT_LT(flat.timeMax - flat.timeMin, 5);
    drag({300, 100}, {303, 200});
    EXPECT_TRUE(axes().timeMin == flat.timeMin && axes().timeMax == flat.timeMax);
    EXPECT_TRUE(axes().uvMax < flat.uvMax && axes().condMin > flat.condMin);
}

TEST_F(Operated, aRectangleEndsWhenItsButtonIsUpWhereverThatWas) {
    begin({300, 100}, {500, 250});
    QMouseEvent passing(QEvent::MouseMove, QPointF(400, 200), chart.mapToGlobal(QPointF(400, 200)), Qt::NoButton,
                        Qt::NoButton, {});
    QCoreApplication::sendEvent(&chart, &passing);
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, {500, 250});
    EXPECT_EQ(zooms, 0);
}

TEST_F(Operated, aClickAndARectangleBesideThePlotDoNotZoom) {
    drag({300, 100}, {303, 102});
    drag({5, 5}, {500, 200});
    EXPECT_EQ(zooms, 0);
    drag({300, 100}, {5000, -50}); // past the edge: the rectangle ends there
    EXPECT_EQ(zooms, 1);
    EXPECT_TRUE(chart.TimeAxisMax() == 10 && chart.UvAxisMax() == 2);
    for (int i = 0; i < 30; ++i) // however deep, the axes keep their ends apart
        drag({300, 100}, {312, 112});
    EXPECT_LT(chart.UvAxisMin(), chart.UvAxisMax());
    EXPECT_LT(chart.CondAxisMin(), chart.CondAxisMax());
    EXPECT_GE(chart.TimeAxisMax() - chart.TimeAxisMin(), 0.009F);
}

TEST_F(Operated, escapeCancelsTheRectangleFirstAndThenLeavesTheZoomAsTheMenuDoes) {
    drag();
    begin({300, 100}, {500, 200});
    const QImage before = chart.grab().toImage();
    QTest::mouseMove(&chart, {500, 250});
    EXPECT_NE(chart.grab().toImage(), before); // the rectangle follows the hand
    QTest::keyClick(&chart, Qt::Key_Escape);
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, {500, 250});
    EXPECT_TRUE(zooms == 1 && axesLeftTo.empty());
    QTest::keyClick(&chart, Qt::Key_Escape);
    EXPECT_EQ(axesLeftTo.size(), 1U);
    drag();
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(&chart, &key);
    chart.findChild<QAction *>("mnuLeaveZoom")->trigger();
    EXPECT_EQ(axesLeftTo.size(), 2U);
}

TEST_F(Operated, theRedrawBringsTheAxesAndEachDrawingTheNewsButNothingToAHiddenChart) {
    QImage seen = chart.grab().toImage();
    const auto changes = [&] { return chart.grab().toImage() != std::exchange(seen, chart.grab().toImage()); };
    chart.setTimeAxisMax(20);
    EXPECT_FALSE(changes());
    chart.Redraw();
    EXPECT_TRUE(changes());
    chart.AddSample(1, 300);
    chart.DrawNewData();
    EXPECT_TRUE(changes());
    chart.AddEventMark(QStringLiteral("S"), 0xFFFF00, 50, 10);
    chart.DrawNewData();
    EXPECT_TRUE(changes());
    chart.hide();
    chart.Redraw();
    QTest::qWait(20);
    EXPECT_FALSE(chart.holdsImage());
}

} // namespace
