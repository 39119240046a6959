// SPDX-License-Identifier: MIT
#include "base/Steps.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

[[noreturn]] void raise(int number) { throw RunTimeError(number); }

TEST(Steps, aFailingStepIsSkippedAndTheNextOneRuns) {
    int ran = 0;
    const int last = skippingErrors([&] { ++ran; },
                                    [&] {
                                        raise(6);
                                        ++ran;
                                    },
                                    [&] { raise(13); }, [&] { ++ran; });
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(last, 13);
    EXPECT_EQ(skippingErrors([] {}), 0);
}

TEST(Steps, aTrapEndsTheRoutineAtItsFirstError) {
    int told = 0;
    bool wentOn = false;
    trapped(
        [&] {
            raise(61);
            wentOn = true;
        },
        [&](const RunTimeError &error) { told = error.number(); });
    EXPECT_EQ(told, RunTimeError::DiskFull);
    EXPECT_FALSE(wentOn);
}

TEST(RunTimeError, aFailedCallOfTheSystemNamesItsFile) {
    const RunTimeError error = RunTimeError::fromErrno(ENOSPC, "/data/run.chd");
    EXPECT_EQ(error.number(), RunTimeError::DiskFull);
    EXPECT_TRUE(error.description().contains("/data/run.chd"));
}

} // namespace
