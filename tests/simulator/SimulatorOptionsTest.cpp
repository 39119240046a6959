// SPDX-License-Identifier: MIT
#include "simulator/SimulatorOptions.h"

#include <gtest/gtest.h>

namespace {

int exitCodeOf(const QStringList &arguments) {
    try {
        readOptions(QStringList{"velquin-sim"} + arguments);
    } catch (const EarlyEnd &end) {
        EXPECT_FALSE(end.why.isEmpty());
        return end.exitCode;
    }
    return -1;
}

TEST(SimulatorOptions, areReadOrRefused) {
    const SimulatorOptions options = readOptions({"velquin-sim", "--kind", "letters", "--speed", "20", "run.velquin"});
    EXPECT_EQ(options.kind, InstrumentKind::Letters);
    EXPECT_EQ(options.speed, 20);
    EXPECT_EQ(options.script, "run.velquin");
    EXPECT_EQ(exitCodeOf({"--help"}), 0);
    for (const QStringList &wrong : {QStringList{"--bogus"},
                                     {"--speed", "0"},
                                     {"--speed", "nan"},
                                     {"--kind", "other"},
                                     {"a", "b"},
                                     {"--replay", "x", "a"},
                                     {"--seed", "-1"},
                                     {"--seed", "4294967296"},
                                     {""},
                                     {"--link", ""}})
        EXPECT_EQ(exitCodeOf(wrong), 2) << wrong.join(' ').toStdString();
}

} // namespace
