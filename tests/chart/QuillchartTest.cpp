// SPDX-License-Identifier: MIT
#include "chart/Quillchart.h"

#include <QMenu>
#include <QSignalSpy>
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
                const AxisValues told{.uvMin = uvMin,
                                      .uvMax = uvMax,
                                      .condMin = condMin,
                                      .condMax = condMax,
                                      .timeMin = from,
                                      .timeMax = to};
                EXPECT_EQ(told, axes());
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
    void drag(QPoint from, QPoint to) {
        QTest::mousePress(&chart, Qt::LeftButton, {}, from);
        QTest::mouseMove(&chart, to);
        QTest::mouseRelease(&chart, Qt::LeftButton, {}, to);
        paint();
    }
    AxisValues axes() const {
        return {.uvMin = chart.UvAxisMin(),
                .uvMax = chart.UvAxisMax(),
                .condMin = chart.CondAxisMin(),
                .condMax = chart.CondAxisMax(),
                .timeMin = chart.TimeAxisMin(),
                .timeMax = chart.TimeAxisMax()};
    }

    Quillchart chart{3};
    std::string events;
    AxisValues axesAtUnzoom;
};

TEST_F(Operated, aRectangleZoomsAllThreeAxesAndADoubleClickLeaves) {
    const AxisValues before = axes();
    drag({300, 100}, {500, 250});
    EXPECT_EQ(events, "Z");
    EXPECT_GT(chart.TimeAxisMin(), 2.5F);
    EXPECT_LT(chart.TimeAxisMax(), 7.0F);
    EXPECT_NEAR((chart.UvAxisMax() - chart.UvAxisMin()) / 2.2, (chart.CondAxisMax() - chart.CondAxisMin()) / 500, 1e-4);
    drag({300, 100}, {500, 250}); // deeper
    chart.setTimeAxisMax(9);      // the window scrolls in the zoom
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
    drag({300, 100}, {500, 250});
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
    drag({300, 100}, {500, 250});
    EXPECT_TRUE(leave());
    EXPECT_EQ(events, "ZU");
}

TEST_F(Operated, zoomsHoweverDeepKeepTheirAxesApart) {
    for (int i = 0; i < 30; ++i)
        drag({300, 100}, {312, 112});
    EXPECT_LT(chart.TimeAxisMin(), chart.TimeAxisMax());
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

TEST_F(Operated, axesTakeEffectWithTheNextRedraw) {
    const QImage before = chart.grab().toImage();
    chart.setUvAxisMax(1);
    EXPECT_EQ(chart.grab().toImage(), before);
    chart.Redraw();
    EXPECT_NE(chart.grab().toImage(), before);
}

TEST_F(Operated, newDataAndNewMarksShow) {
    chart.setTimeAxisMax(20);
    chart.Redraw();
    const QImage before = chart.grab().toImage();
    for (int i = 0; i < 4; ++i)
        chart.AddSample(1, 300);
    chart.DrawNewData();
    const QImage withData = chart.grab().toImage();
    EXPECT_NE(withData, before);
    chart.AddEventMark(QStringLiteral("S"), 0xFFFF00, 50, 10);
    chart.DrawNewData();
    EXPECT_NE(chart.grab().toImage(), withData);
}

TEST_F(Operated, thePointerReadsTheRunOut) {
    const QImage before = chart.grab().toImage();
    QTest::mouseMove(&chart, {400, 200});
    paint();
    EXPECT_NE(chart.grab().toImage(), before);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&chart, &leave);
    EXPECT_EQ(chart.grab().toImage(), before);
}

TEST(Scripted, aDriverReachesThePropertiesTheOperationsAndTheRun) {
    Quillchart chart(0);
    QWidget *widget = &chart;
    qint16 status = -1;
    ASSERT_TRUE(QMetaObject::invokeMethod(widget, "AddSample", Q_RETURN_ARG(qint16, status), Q_ARG(float, 0.25F),
                                          Q_ARG(float, 7.0F)));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(widget->property("SampleCount").toInt(), 1);
    EXPECT_TRUE(widget->setProperty("UvAxisMax", 0.5F));
    EXPECT_EQ(chart.UvAxisMax(), 0.5F);
    chart.AddEventMark(QStringLiteral("S"), 0xFFFF00, 50, 1.5F);
    QVariantList marks;
    ASSERT_TRUE(QMetaObject::invokeMethod(widget, "marks", Q_RETURN_ARG(QVariantList, marks)));
    EXPECT_EQ(marks.front().toMap().value(QStringLiteral("Time")).toFloat(), 1.5F);
    EXPECT_EQ(chart.samples(-5, 100).size(), 1);
}

} // namespace
