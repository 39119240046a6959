// SPDX-License-Identifier: MIT
#include "chart/Quillchart.h"

#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

namespace {

/// A shown chart that the operator works on; it notes what it tells, and with which axes.
struct Operated : testing::Test {
    Operated() {
        chart.resize(800, 400);
        chart.setChartTitle(QStringLiteral("Chart Recorder"));
        for (int i = 0; i < 3000; ++i)
            chart.AddSample(0.5F + 0.0001F * static_cast<float>(i), 100);
        chart.Redraw();
        chart.show();
        paint();
        QObject::connect(
            &chart, &Quillchart::Zoomed,
            [this](qint16 index, float from, float to, float uvMin, float uvMax, float condMin, float condMax) {
                EXPECT_EQ(axes(), (AxisValues{uvMin, uvMax, condMin, condMax, from, to}));
                EXPECT_EQ(index, 3);
                events += 'Z';
            });
        QObject::connect(&chart, &Quillchart::Unzoomed, [this](qint16 index) {
            EXPECT_EQ(index, 3);
            axesAtUnzoom = axes();
            events += 'U';
        });
    }
    void paint() { QTest::qWait(20); }
    void drag(QPoint from = {300, 100}, QPoint to = {500, 250}) {
        QTest::mousePress(&chart, Qt::LeftButton, {}, from);
        QTest::mouseMove(&chart, to);
        QTest::mouseRelease(&chart, Qt::LeftButton, {}, to);
        paint();
    }
    AxisValues axes() const { return chart.run().axes(); }

    Quillchart chart{3};
    std::string events;
    AxisValues axesAtUnzoom;
};

TEST_F(Operated, aRectangleZoomsAllThreeAxesAndADoubleClickLeaves) {
    const AxisValues before = axes();
    drag();
    EXPECT_EQ(events, "Z");
    EXPECT_GT(chart.TimeAxisMin(), 2.5F);
    EXPECT_LT(chart.TimeAxisMax(), 7.0F);
    EXPECT_NEAR((chart.UvAxisMax() - chart.UvAxisMin()) / 2.2, (chart.CondAxisMax() - chart.CondAxisMin()) / 500, 1e-4);
    drag();                  // deeper
    chart.setTimeAxisMax(9); // the window scrolls in the zoom
    QTest::mouseDClick(&chart, Qt::LeftButton, {}, {400, 200});
    EXPECT_EQ(events, "ZZU");
    EXPECT_EQ(axesAtUnzoom, before);
    QTest::mouseDClick(&chart, Qt::LeftButton, {}, {400, 200});
    EXPECT_EQ(events, "ZZU");
}

TEST_F(Operated, aClickAFlatRectangleAndOneBesideThePlotDoNotZoom) {
    drag({300, 100}, {303, 102});
    drag({300, 100}, {500, 103});
    drag({5, 5}, {500, 200});
    EXPECT_EQ(events, "");
    drag({300, 100}, {5000, -50}); // past the edge: the rectangle ends there
    EXPECT_EQ(events, "Z");
    EXPECT_EQ(chart.TimeAxisMax(), 10.0F);
    EXPECT_EQ(chart.UvAxisMax(), 2.0F);
}

TEST_F(Operated, escapeCancelsTheRectangleFirstAndThenLeavesTheZoom) {
    drag();
    QTest::mousePress(&chart, Qt::LeftButton, {}, {300, 100});
    QTest::mouseMove(&chart, {500, 250});
    QTest::keyClick(&chart, Qt::Key_Escape);
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, {500, 250});
    EXPECT_EQ(events, "Z");
    QTest::keyClick(&chart, Qt::Key_Escape);
    EXPECT_EQ(events, "ZU");
}

TEST_F(Operated, theMenuLeavesTheZoomAndKnowsWhetherThereIsOne) {
    const auto leave = [this] {
        QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(&chart, &key);
        auto *action = chart.findChild<QAction *>(QStringLiteral("mnuLeaveZoom"));
        const bool enabled = action->isEnabled();
        action->trigger();
        chart.findChild<QMenu *>()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return enabled;
    };
    EXPECT_FALSE(leave());
    drag();
    EXPECT_TRUE(leave());
    EXPECT_EQ(events, "ZU");
}

TEST_F(Operated, zoomsHoweverDeepKeepTheirAxesApart) {
    for (int i = 0; i < 30; ++i)
        drag({300, 100}, {312, 112});
    EXPECT_LT(chart.UvAxisMin(), chart.UvAxisMax());
    EXPECT_LT(chart.CondAxisMin(), chart.CondAxisMax());
    EXPECT_GE(chart.TimeAxisMax() - chart.TimeAxisMin(), 0.009F);
}

TEST_F(Operated, aChartOutOfSightKeepsNoPicture) {
    EXPECT_TRUE(chart.holdsImage());
    chart.hide();
    EXPECT_FALSE(chart.holdsImage());
    chart.AddSample(1, 1);
    chart.DrawNewData();
    chart.Redraw();
    paint();
    EXPECT_FALSE(chart.holdsImage());
    chart.show();
    paint();
    EXPECT_TRUE(chart.holdsImage());
}

TEST_F(Operated, theRedrawBringsTheAxesAndEachDrawingTheNews) {
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
}

} // namespace
