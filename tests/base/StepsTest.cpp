// SPDX-License-Identifier: MIT
#include "base/Steps.h"

#include <gtest/gtest.h>

#include <cerrno>

using namespace ostrel;

namespace {

/// A step that fails.
auto failing(int number) {
    return [number] { throw RunTimeError(number); };
}

TEST(Steps, aFailingStepIsSkippedAndTheNextOneRuns) {
    int ran = 0;
    const auto step = [&] { ++ran; };
    EXPECT_EQ(skippingErrors(step, failing(6), failing(13), step), 13);
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(skippingErrors(step), 0);
}

TEST(Steps, aTrapMeetsTheErrorThatEndsItsRoutine) {
    int told = 0;
    trapped(failing(61), [&](const RunTimeError &error) { told = error.number(); });
    EXPECT_EQ(told, ErrorNumber::DiskFull);
}

TEST(RunTimeError, aFailedCallOfTheSystemNamesItsFile) {
    const RunTimeError error = RunTimeError::fromErrno(ENOSPC, "/data/run.chd");
    EXPECT_EQ(error.number(), ErrorNumber::DiskFull);
    EXPECT_TRUE(error.description().contains("/data/run.chd"));
}

} // namespace
