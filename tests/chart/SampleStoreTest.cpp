// SPDX-License-Identifier: MIT
#include "chart/run/SampleStore.h"

#include "chart/run/Run.h"
#include "fakes/AllocationProbe.h"

#include <gtest/gtest.h>

#include <random>

using namespace ostrel;

namespace {

TEST(SampleStore, sumsUpAnyStretchLikeALookAtEachSample) {
    std::mt19937 random{7};
    SampleStore store;
    const auto value = [&] {
        constexpr float odd[] = {std::numeric_limits<float>::quiet_NaN(), Extent::infinity, -Extent::infinity};
        const unsigned kind = random() % 50;
        return kind < 3 ? odd[kind] : static_cast<float>(random() % 20001) / 10000 - 1;
    };
    const auto expectTrue = [&](qint64 from, qint64 to) {
        Extent simple;
        for (qint64 i = from; i < to; ++i)
            simple.join(store.at(i));
        for (int lane = 0; lane < 4; ++lane)
            EXPECT_EQ(store.extent(from, to).lanes[lane], simple.lanes[lane]) << from << " to " << to;
    };
    while (store.size() < 2 * SampleStore::chunkSize + 1234) {
        store.append({value(), value()});
        if (store.size() <= 600)
            expectTrue(0, store.size());
    }
    for (const qint64 length : {0, 1, 15, 16, 17, 255, 257, 4096, 5000, 65536, 70000, 132306})
        for (const qint64 from : {qint64{0}, qint64{1}, qint64{16}, qint64{4095}, store.size() - length})
            if (from + length <= store.size())
                expectTrue(from, from + length);
}

TEST(OutOfMemory, isAnsweredAndLeavesTheRunAsItWas) {
    ::Run run; // whose name the test bears too
    for (int i = 0; i < SampleStore::chunkSize; ++i)
        run.AddSample(1, 2);
    {
        const AllocationProbe::OutOfMemory over(sizeof(EventMark));
        EXPECT_TRUE(run.AddSample(3, 4) != 0 && run.AddEventMark(QStringLiteral("E"), 0, 10, 1) != 0);
    }
    EXPECT_TRUE(run.data().marks.empty());
    EXPECT_EQ(run.AddSample(3, 4), 0);
    EXPECT_EQ(run.data().samples.at(SampleStore::chunkSize).cond, 4);
}

} // namespace
