// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

bool records(LiveOstrel &live, int samples, std::chrono::milliseconds patience) {
    return within(patience, [&] { return live.held(0) >= samples; });
}

TEST(Edges, AnErrorThatNobodyHandlesEndsNeitherTheRecordingNorTheProgram) {
    LiveOstrel live("kind status\nwait 8s\nbad E 5\nwait 2s\nbad E 5\nwait 2s\nbad E 5\nwait 10m\n");
    ASSERT_TRUE(QDir(live.file("data/ostrel")).mkdir("ChartErr.log")); // which cannot be written
    live.press("mnuStart");
    live.await("Run-time error '75':");
    const int held = live.held(0);
    EXPECT_TRUE(records(live, held + 30, 10s)); // under the box, past the other errors
    live.press("OK");
    EXPECT_EQ(live.windows(), QStringList{"frmMain"});
    EXPECT_EQ(live.entries("Log/" + live.entries("Log").value(0)).size(), 1); // the log was written at once
    EXPECT_TRUE(records(live, held + 40, 5s));
}

TEST(Edges, ALineThatNeverPausesIsDecodedAndNoiseIsSurvived) {
    // Sixteen pairs in each fifth of a second, without a pause for the decoder, and then noise.
    const QByteArray pairs = QByteArray("raw 96 55 3e 80 00 00 96 43 41 48 00 00\n").repeated(15) + "wait 0.2s\n";
    LiveOstrel live("kind letters\n" + pairs.repeated(75) + QByteArray("garbage 190\nwait 0.2s\n").repeated(25) +
                    "wait 10m\n");
    live.press("mnuStart");
    ASSERT_TRUE(records(live, 1, 5s));
    for (int second = 0; second < 5; ++second)
        EXPECT_TRUE(records(live, live.held(0) + 40, 1500ms));
    EXPECT_TRUE(within(20s, [&] { return !live.isLinked() || live.held(0) > 1100; }));
    within(7s, [] { return false; }); // the noise passes
    EXPECT_TRUE(within(10s, [&] { return live.isLinked(); }));
    EXPECT_EQ(live.windows(), QStringList{"frmMain"});
}

} // namespace
