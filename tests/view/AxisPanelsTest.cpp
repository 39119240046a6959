// SPDX-License-Identifier: MIT
#include "base/Numbers.h"
#include "view/ViewFixture.h"

#include <QLocale>

namespace {

using AxisPanelsTest = ViewTest;

TEST_F(AxisPanelsTest, PickBringsItsMinimumAndAppliesAtOnce) {
    axisControls.cmbYAxis[0]->setListIndex(3);
    EXPECT_EQ(panel(0), "0.200 -0.020");
    EXPECT_EQ(chart[0].uvMax, 0.2F);
    EXPECT_EQ(tabs.ChartViews[0].UvMin, -0.02F);
}

TEST_F(AxisPanelsTest, OnlyANumberCanBeTypedAndOnlyTheUvMinimumTakesAMinus) {
    minimum(0).type("-9").type("-8--"); // over what is selected
    EXPECT_EQ(panel(0), "2.000 -8");
    EXPECT_EQ(prompts.beeps, 2);
    minimum(0).type("1-.2.3e 4\b5");
    EXPECT_EQ(panel(0), "2.000 1.235");
    EXPECT_EQ(prompts.beeps, 6);
    minimum(1).type("-5");
    scale(0).type("-1");
    EXPECT_EQ(panel(1) + ' ' + panel(0), "500.0 5 1 1.235");
    EXPECT_EQ(prompts.beeps, 8);
}

TEST_F(AxisPanelsTest, CommaIsThePointWhereTheLocaleHasIt) {
    QLocale::setDefault(QLocale(QLocale::German));
    values.DecimalPoint = decimalSeparator();
    scale(0).type("1,5.2").enter();
    EXPECT_EQ(chart[0].uvMax, 1.52F);
    QLocale::setDefault(QLocale::c());
}

TEST_F(AxisPanelsTest, ValuesOutsideTheirRangeAreLimitedWithABeepEach) {
    scale(0).type("5").enter();
    EXPECT_EQ(panel(0), "2.000 -0.200");
    minimum(0).type("-1");
    scale(0).type("0.0005").enter();
    EXPECT_EQ(panel(0), "0.001 -1.000");
    EXPECT_EQ(prompts.beeps, 2);
    minimum(1).type("600");
    scale(1).type("700").enter();
    EXPECT_EQ(panel(1), "500.0 499.5");
    EXPECT_EQ(prompts.beeps, 4);
}

TEST_F(AxisPanelsTest, TooSmallAGapIsToldAndChangesNothing) {
    minimum(0).type("2").enter();
    ASSERT_EQ(prompts.shown.size(), 1U);
    EXPECT_EQ(prompts.shown[0].text,
              "The UV Axis Full Scale (AUFS) entry must be at least 0.001 AU greater than the UV "
              "Axis Minimum entry.");
    EXPECT_EQ(panel(0), "2.000 -0.200");
    EXPECT_EQ(chart[0].uvMin, -0.2F);
    minimum(0).type("1.999").enter(); // the smallest gap, which no binary fraction hits
    EXPECT_EQ(panel(0), "2.000 1.999");
    EXPECT_EQ(prompts.shown.size(), 1U);
}

TEST_F(AxisPanelsTest, EntryWithoutANumberCountsAsZero) {
    minimum(0).type("-").enter();
    EXPECT_EQ(panel(0), "2.000 0.000");
    EXPECT_EQ(chart[0].uvMin, 0.0F);
    scale(1).type(".").enter();
    EXPECT_EQ(panel(1), "500.0 0.0");
    EXPECT_EQ(prompts.shown.size(), 1U);
}

TEST_F(AxisPanelsTest, SetIsLitByTheEntryChangedLast) {
    scale(0).type("2.0"); // the same value in another form
    EXPECT_TRUE(lit(0));
    minimum(0).type("-0.200");
    EXPECT_FALSE(lit(0));
    EXPECT_TRUE(axes.AxisEntryChanged(0));
    EXPECT_FALSE(axes.AxisEntryChanged(4));
}

TEST_F(AxisPanelsTest, ScalesBelongToTheTabInFront) {
    give(1, 30);
    tabStrip.select(1);
    scale(0).type("0.5").enter();
    EXPECT_EQ(chart[1].uvMax, 0.5F);
    EXPECT_EQ(chart[0].uvMax, 2.0F);
    tabStrip.select(0);
    EXPECT_EQ(panel(0), "2.000 -0.200");
}

} // namespace
