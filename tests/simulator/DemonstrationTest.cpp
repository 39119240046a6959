// SPDX-License-Identifier: MIT
#include "Played.h"

#include <QDirIterator>
#include <QFile>
#include <gtest/gtest.h>

namespace {

QString textOf(const QString &path) {
    QFile file{path};
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

TEST(Demonstration, showsAllThatAnInstrumentCanTell) {
    const QString script = textOf(":/simulator/demo.velquin");
    EXPECT_TRUE(parseRunScript(script).loops);
    EXPECT_EQ(Played{script}.news(), "P1 R1 E2 E2 E2 R3 R1 E2 R2 R1 E8 E2 R0 M P0");
    EXPECT_EQ((Played{script, {.kind = InstrumentKind::Letters}}.news()), "E4 E2 E2 E2 H1 H2 E2 E8 E2 E3 M");
}

TEST(SampleRuns, canAllBePlayed) {
    for (QDirIterator runs{RUNS_FOLDER, {"*.velquin"}}; runs.hasNext();)
        EXPECT_FALSE(Played{textOf(runs.next())}.ticks.empty());
}

} // namespace
