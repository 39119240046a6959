// SPDX-License-Identifier: MIT
#include "chart/files/Crc32.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

using namespace ostrel;

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
