// SPDX-License-Identifier: MIT
#include "chart/Quillchart.h"

#include "chart/table/ShownValues.h"

#include <QAccessible>
#include <QTest>
#include <QWheelEvent>
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
    void lengthen(int minutes) {
        while (chart.SampleCount() <= minutes * 300)
            chart.AddSample(1, 100);
    }

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

TEST_F(Operated, theWheelPansZoomsAtThePointerAndScalesUv) {
    lengthen(60);
    const auto turn = [&](int notches, Qt::KeyboardModifier with, QPointF at = {400, 200}) {
        QWheelEvent wheel(at, chart.mapToGlobal(at), {}, {0, 120 * notches}, {}, with, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&chart, &wheel);
    };
    turn(-2, Qt::NoModifier);
    EXPECT_EQ(axes(), (AxisValues{.timeMin = 2, .timeMax = 12}));
    turn(100, Qt::NoModifier);
    EXPECT_EQ(axes(), AxisValues());
    turn(-1000, Qt::NoModifier);
    EXPECT_EQ(chart.TimeAxisMax(), 60);
    chart.leaveZoom();
    turn(1, Qt::ShiftModifier);
    EXPECT_EQ(axes(), (AxisValues{.uvMin = -0.16F, .uvMax = 1.6F}));
    turn(-1, Qt::ShiftModifier);
    EXPECT_FLOAT_EQ(chart.UvAxisMin(), -0.2F);
    chart.leaveZoom();
    turn(1, Qt::ControlModifier);
    EXPECT_NEAR(axes().timeMax - axes().timeMin, 8, 1e-5);
    EXPECT_NEAR(axes().condMax - axes().condMin, 400, 1e-3);
    turn(1, Qt::ControlModifier, {400, 395}); // below the plot
    EXPECT_NEAR(axes().timeMax - axes().timeMin, 6.4, 1e-5);
    EXPECT_NEAR(axes().condMax - axes().condMin, 400, 1e-3);
    turn(-20, Qt::ControlModifier); // out to the axes before, and no further
    EXPECT_FALSE(chart.zoomed());
    EXPECT_EQ(axes(), AxisValues());
}

TEST_F(Operated, keysPanZoomReadAndSpreadARectangleAndBackspaceGoesBackOneByOne) {
    lengthen(60);
    chart.setFocus();
    const auto press = [&](Qt::Key key, Qt::KeyboardModifier with = Qt::NoModifier, int times = 1) {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(&chart, key, with);
        QTest::qWait(20); // it is painted
    };
    press(Qt::Key_PageDown);
    press(Qt::Key_Right, Qt::NoModifier, 1000); // held down
    EXPECT_EQ(chart.TimeAxisMax(), 60);
    const AxisValues end = axes();
    press(Qt::Key_Plus);
    press(Qt::Key_Right, Qt::ShiftModifier, 10);
    press(Qt::Key_Return);
    EXPECT_NEAR(axes().timeMax - axes().timeMin, 2, 1e-4); // a quarter of 8 minutes
    press(Qt::Key_Backspace);
    EXPECT_NEAR(axes().timeMax - axes().timeMin, 8, 1e-5);
    press(Qt::Key_Backspace);
    EXPECT_EQ(axes(), end);
    press(Qt::Key_Backspace);
    EXPECT_EQ(axes(), AxisValues());
    EXPECT_FALSE(chart.zoomed());

    const QImage plain = chart.grab().toImage();
    press(Qt::Key_Space);
    const QImage read = chart.grab().toImage();
    EXPECT_NE(read, plain);
    press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_NE(chart.grab().toImage(), read);
    EXPECT_FALSE(chart.zoomed());
    press(Qt::Key_Right, Qt::ControlModifier, 100); // the window follows
    EXPECT_GT(chart.TimeAxisMin(), 1);
    press(Qt::Key_Escape);
    EXPECT_TRUE(chart.zoomed()); // the read-out was left
    press(Qt::Key_Escape);
    EXPECT_FALSE(chart.zoomed());
    press(Qt::Key_Space);
    chart.ClearData();
    press(Qt::Key_Right); // there is nothing left to read: it pans, and there is nowhere to go
    EXPECT_EQ(axes(), AxisValues());
}

TEST_F(Operated, theHeadAndScreenReadersTellTheNumbersOfNowUntilOthersAreReadOut) {
    lengthen(1);
    chart.AddEventMark(QStringLiteral("S"), 0xFFFF00, 50, 0.5F);
    chart.setFocus();
    QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&chart);
    ASSERT_TRUE(spoken != nullptr && spoken->role() == QAccessible::Chart && spoken->textInterface() != nullptr);
    const auto text = [&] { return spoken->textInterface()->text(0, spoken->textInterface()->characterCount()); };
    EXPECT_EQ(spoken->text(QAccessible::Value), QString());
    const QImage plain = chart.grab().toImage();
    chart.showNow(1.0F, SamplePair{0.01234F, 5});
    EXPECT_NE(chart.grab().toImage(), plain);
    EXPECT_EQ(spoken->text(QAccessible::Value), "UV 0.0123 AU, conductivity 5.00 mS/cm, at 1.00 min");
    EXPECT_TRUE(text().contains("Time axis from 0.00 to 10.00 min\nNow: UV 0.0123 AU"));
    EXPECT_TRUE(text().endsWith("\nMark S at 0.50 min"));
    QTest::keyClick(&chart, Qt::Key_Space);
    QTest::keyClick(&chart, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_TRUE(text().contains("Read out: "));
    QTest::keyClick(&chart, Qt::Key_Escape);
    chart.showNow({}, {});
    EXPECT_EQ(chart.grab().toImage(), plain);
}

TEST_F(Operated, itsPictureIsDarkOnWhiteAndItsValuesAreThoseShown) {
    lengthen(1);
    const QImage picture = chart.picture(2);
    EXPECT_EQ(picture.size(), 2 * chart.size());
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::white));
    AxisValues shown;
    shown.timeMin = 1.0F / 300;
    shown.timeMax = 2.0F / 300;
    EXPECT_EQ(shownValues(chart.run().data(), shown).section('\n', 1, 1).section('\t', 0, 0), "0.0033");
    EXPECT_EQ(shownValues(chart.run().data(), shown).count('\n'), 3);
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
