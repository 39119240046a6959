// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"
#include "base/Numbers.h"

#include <QLocale>

namespace {

class AxisPanelsTest : public StartedProgram {
protected:
    /// Both entries of a panel.
    QString panel(int i) {
        return text(QString("cmbYAxis(%1)").arg(i)) + ' ' + text(QString("txtYAxisMin(%1)").arg(i));
    }
};

TEST_F(AxisPanelsTest, PickBringsItsMinimumAndAppliesAtOnce) {
    find<ComboEntry>("cmbYAxis(0)")->setListIndex(3);
    EXPECT_EQ(panel(0), "0.200 -0.020");
    EXPECT_EQ(chart(0).UvAxisMax(), 0.2F);
    EXPECT_EQ(chart(0).UvAxisMin(), -0.02F);
}

TEST_F(AxisPanelsTest, OnlyANumberCanBeTypedAndOnlyTheUvMinimumTakesAMinus) {
    struct Row {
        const char *entry, *typed, *stays;
        int beeps;
    };
    for (const auto &[entry, typed, stays, beeps] :
         {Row{"txtYAxisMin(0)", "-8--", "-8", 2}, Row{"txtYAxisMin(0)", "1-.2.3e 4\b5", "1.235", 4},
          Row{"txtYAxisMin(1)", "-5", "5", 1}, Row{"cmbYAxis(0)", "-1", "1", 1}}) {
        prompts.beeps = 0;
        type(entry, typed);
        EXPECT_EQ(text(entry), stays);
        EXPECT_EQ(prompts.beeps, beeps);
    }
}

TEST_F(AxisPanelsTest, CommaIsThePointWhereTheLocaleHasIt) {
    QLocale::setDefault(QLocale(QLocale::German));
    program.reset();
    start();
    enter("cmbYAxis(0)", "1,5.2");
    EXPECT_EQ(chart(0).UvAxisMax(), 1.52F);
    QLocale::setDefault(QLocale::c());
}

TEST_F(AxisPanelsTest, ValuesOutsideTheirRangeAreLimitedWithABeepEach) {
    enter("cmbYAxis(0)", "5");
    EXPECT_EQ(panel(0), "2.000 -0.200");
    type("txtYAxisMin(0)", "-1");
    enter("cmbYAxis(0)", "0.0005");
    EXPECT_EQ(panel(0), "0.001 -1.000");
    type("txtYAxisMin(1)", "600");
    enter("cmbYAxis(1)", "700");
    EXPECT_EQ(panel(1), "500.0 499.5");
    EXPECT_EQ(prompts.beeps, 4);
}

TEST_F(AxisPanelsTest, TooSmallAGapIsToldAndNoNumberCountsAsZero) {
    enter("txtYAxisMin(0)", "2");
    EXPECT_EQ(told(), "The UV Axis Full Scale (AUFS) entry must be at least 0.001 AU greater than the UV "
                      "Axis Minimum entry.");
    EXPECT_EQ(panel(0), "2.000 -0.200");
    EXPECT_EQ(chart(0).UvAxisMin(), -0.2F);
    enter("txtYAxisMin(0)", "1.999"); // the smallest gap, which no binary fraction hits
    EXPECT_EQ(panel(0), "2.000 1.999");
    enter("txtYAxisMin(0)", "-");
    EXPECT_EQ(panel(0), "2.000 0.000");
    EXPECT_EQ(prompts.shown.size(), 1U);
    enter("cmbYAxis(1)", ".");
    EXPECT_EQ(panel(1), "500.0 0.0");
    EXPECT_EQ(prompts.shown.size(), 2U);
}

TEST_F(AxisPanelsTest, SetIsLitByTheEntryChangedLast) {
    type("cmbYAxis(0)", "2.0"); // the same value in another form
    EXPECT_TRUE(usable("cmdSet(0)"));
    type("txtYAxisMin(0)", "-0.200");
    EXPECT_FALSE(usable("cmdSet(0)"));
}

} // namespace
