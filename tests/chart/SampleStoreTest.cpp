// SPDX-License-Identifier: MIT
#include "chart/run/SampleStore.h"

#include "chart/Quillchart.h"
#include "fakes/AllocationProbe.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

namespace {

struct Store : testing::Test {
    float value() {
        const unsigned kind = random() % 50;
        if (kind == 0)
            return std::numeric_limits<float>::quiet_NaN();
        if (kind == 1)
            return random() % 2 ? Extent::infinity : -Extent::infinity;
        return static_cast<float>(random() % 20001) / 10000 - 1;
    }
    void fill(qint64 pairs) {
        while (store.size() < pairs)
            store.append({value(), value()});
    }
    void expectTrue(qint64 from, qint64 to) const {
        Extent simple;
        for (qint64 i = from; i < to; ++i)
            simple.join(store.at(i));
        const Extent extent = store.extent(from, to);
        EXPECT_EQ(extent.uvMin(), simple.uvMin()) << from << " to " << to;
        EXPECT_EQ(extent.uvMax(), simple.uvMax()) << from << " to " << to;
        EXPECT_EQ(extent.condMin(), simple.condMin()) << from << " to " << to;
        EXPECT_EQ(extent.condMax(), simple.condMax()) << from << " to " << to;
    }

    std::mt19937 random{7};
    SampleStore store;
};

TEST_F(Store, sumsUpAnyStretchLikeALookAtEachSample) {
    fill(2 * SampleStore::chunkSize + 1234);
    for (const qint64 length : {0, 1, 15, 16, 17, 255, 257, 4096, 5000, 65536, 70000, 132306})
        for (const qint64 from : {qint64{0}, qint64{1}, qint64{16}, qint64{4095}, store.size() - length})
            if (from + length <= store.size())
                expectTrue(from, from + length);
}

TEST_F(Store, isRightAfterEachSample) {
    for (int pairs = 1; pairs <= 600; ++pairs) {
        fill(pairs);
        expectTrue(0, pairs);
        expectTrue(pairs / 2, pairs);
    }
}

TEST_F(Store, handsOutWhatLiesSideBySide) {
    fill(SampleStore::chunkSize + 10);
    EXPECT_EQ(store.stretchFrom(5).size(), SampleStore::chunkSize - 5U);
    EXPECT_EQ(store.stretchFrom(SampleStore::chunkSize).size(), 10U);
}

TEST(OutOfMemory, isAnsweredAndLeavesTheRunAsItWas) {
    Quillchart chart(0);
    for (int i = 0; i < SampleStore::chunkSize; ++i)
        chart.AddSample(1, 2);
    for (int i = 0; i < 4; ++i)
        chart.AddEventMark(QStringLiteral("S"), 0, 10, 1);
    {
        const AllocationProbe::OutOfMemory over(64);
        EXPECT_NE(chart.AddSample(3, 4), 0);
        EXPECT_NE(chart.AddEventMark(QStringLiteral("E"), 0, 10, 1), 0);
    }
    EXPECT_EQ(chart.SampleCount(), SampleStore::chunkSize);
    EXPECT_EQ(chart.marks().size(), 4);
    EXPECT_EQ(chart.AddSample(3, 4), 0);
    EXPECT_EQ(chart.samples(SampleStore::chunkSize, 9), QVariantList{QVariant(QVariantList{3.0F, 4.0F})});
}

} // namespace
