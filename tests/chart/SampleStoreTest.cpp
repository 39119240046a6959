// SPDX-License-Identifier: MIT
#include "chart/run/SampleStore.h"

#include "chart/files/Crc32.h"
#include "chart/run/Run.h"
#include "fakes/AllocationProbe.h"

#include <gtest/gtest.h>
#include <zlib.h>

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
    ::Run run; // the test has the same name
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

TEST(Crc32, isThatOfZlibAtEveryLengthAndPlace) {
    std::mt19937 random(1);
    std::vector<unsigned char> bytes(1300);
    for (unsigned char &byte : bytes)
        byte = static_cast<unsigned char>(random());
    for (std::size_t size = 0; size < 1200; ++size) {
        const unsigned char *from = bytes.data() + size % 17;
        EXPECT_EQ(crc32Of(7, from, size), ::crc32_z(7, from, size)) << size;
    }
}

} // namespace
