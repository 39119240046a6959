// SPDX-License-Identifier: MIT
#include "base/Steps.h"

#include <gtest/gtest.h>

#include <cerrno>

using namespace ostrel;

namespace {

template <int number>
void failing() {
    throw RunTimeError(number);
}

TEST(Steps, aFailingStepIsSkippedAndTheNextOneRuns) {
    int ran = 0;
    const auto step = [&] { ++ran; };
    EXPECT_EQ(skippingErrors(step, failing<6>, failing<13>, step), 13);
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(skippingErrors(step), 0);
}

TEST(RunTimeError, aFailedCallOfTheSystemNamesItsFile) {
    const RunTimeError error = RunTimeError::fromErrno(ENOSPC, "/data/run.chd");
    EXPECT_EQ(error.number(), ErrorNumber::DiskFull);
    EXPECT_TRUE(error.description().contains("/data/run.chd"));
}

} // namespace
