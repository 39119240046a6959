// SPDX-License-Identifier: MIT
#include "chart/Quillchart.h"
#include "fakes/FakeChart.h"

#include <gtest/gtest.h>

namespace {

/// What every chart owes its callers, so that a rule tested on the fake holds on the real one.
template <typename Chart>
struct Contract : testing::Test {
    static std::unique_ptr<ViewedChart> make() {
        if constexpr (std::is_same_v<Chart, Quillchart>)
            return std::make_unique<Quillchart>(qint16{0});
        else
            return std::make_unique<Chart>();
    }
    void add(int pairs) {
        for (int i = 0; i < pairs; ++i)
            EXPECT_EQ(chart->AddSample(0.5F, 20), 0);
    }

    AxisValues axes() const {
        return {chart->UvAxisMin(),   chart->UvAxisMax(),   chart->CondAxisMin(),
                chart->CondAxisMax(), chart->TimeAxisMin(), chart->TimeAxisMax()};
    }

    std::unique_ptr<ViewedChart> chart = make();
};

using Charts = testing::Types<Quillchart, FakeChart>;
TYPED_TEST_SUITE(Contract, Charts);

TYPED_TEST(Contract, theFirstSampleStandsAtZeroAndEachFurtherOneA300thOfAMinuteOn) {
    EXPECT_EQ(this->chart->GetLastTime(), 0.0F);
    this->add(1);
    EXPECT_EQ(this->chart->GetLastTime(), 0.0F);
    this->add(1);
    EXPECT_FLOAT_EQ(this->chart->GetLastTime(), 1 / 300.0F);
    this->add(2999);
    EXPECT_EQ(this->chart->GetLastTime(), 10.0F);
}

TYPED_TEST(Contract, theLastPointIsVisibleFromTheAxisMinimumToItsMaximum) {
    this->add(301); // one minute
    const auto visible = [&](float from, float to) {
        this->chart->setTimeAxisMin(from);
        this->chart->setTimeAxisMax(to);
        return this->chart->IsLastPointVisible();
    };
    EXPECT_TRUE(visible(0, 1));
    EXPECT_TRUE(visible(1, 2));
    EXPECT_FALSE(visible(0, 0.999F));
    EXPECT_FALSE(visible(1.001F, 2));
}

TYPED_TEST(Contract, aNewChartShowsTenMinutesAtFullScaleAndThenWhatIsSet) {
    EXPECT_EQ(this->axes(), (AxisValues{-0.2F, 2, 0, 500, 0, 10}));
    EXPECT_TRUE(this->chart->ChartTitle().isEmpty());
    this->chart->setUvAxisMin(-2);
    this->chart->setUvAxisMax(-1.5F);
    this->chart->setCondAxisMin(499.5F);
    this->chart->setCondAxisMax(500);
    this->chart->setTimeAxisMin(32757);
    this->chart->setTimeAxisMax(32767);
    this->chart->setChartTitle(QStringLiteral("Run 7"));
    this->chart->Redraw();
    this->chart->DrawNewData();
    EXPECT_EQ(this->axes(), (AxisValues{-2, -1.5F, 499.5F, 500, 32757, 32767}));
    EXPECT_EQ(this->chart->ChartTitle(), QStringLiteral("Run 7"));
}

TYPED_TEST(Contract, marksAndMethodTextsLeaveTheTimeAlone) {
    EXPECT_EQ(this->chart->AddEventMark(QStringLiteral("S"), 0xFFFF00, 50, 3), 0);
    EXPECT_EQ(this->chart->AddMethodText(QStringLiteral("Gradient\r\n"), 4), 0);
    EXPECT_EQ(this->chart->GetLastTime(), 0.0F);
}

} // namespace
