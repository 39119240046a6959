// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"
#include "driver/LiveOstrel.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <csignal>

using namespace std::chrono_literals;

namespace {

const QByteArray steady = "kind status\nuv 0.1\nnoise uv 0.01\ncond 20\nwait 10m\n";

bool holds(LiveOstrel &live, int chart, int samples, std::chrono::milliseconds patience = 20s) {
    return within(patience, [&] { return live.held(chart) >= samples; });
}

/// A recorder that has logged some samples comes to an end that nobody asked for; what is left is a left-over.
QString leaveLog(LiveOstrel &live) {
    EXPECT_TRUE(holds(live, 5, 20));
    live.recorder().signal(SIGTERM);
    EXPECT_TRUE(live.recorder().endsWithin(5s));
    EXPECT_EQ(live.entries("Log").size(), 1);
    return "Log/" + live.entries("Log").value(0);
}

TEST(Edges, WhateverEndsTheProgramUnderTheRecoveryDialogTouchesNoLeftOver) {
    LiveOstrel live(steady);
    const QString left = leaveLog(live);
    const auto endsAndTouchesNothing = [&] {
        QFile store(live.file("config/ostrel/Ostrel MS.ini"));
        return live.recorder().endsWithin(5s) && live.entries(left) == QStringList{"Log00001.dat"} &&
               store.open(QIODevice::ReadOnly) && store.readAll().contains(left.mid(4).toUtf8());
    };
    live.startRecorder("frmDataRecovery");
    live.recorder().signal(SIGTERM);
    EXPECT_TRUE(endsAndTouchesNothing());

    live.startRecorder("frmDataRecovery");
    EXPECT_TRUE(within(10s, [&] { return live.isLinked(); }));
    live.stopInstrument();
    live.await("frmNoData");
    live.press("Exit");
    EXPECT_TRUE(endsAndTouchesNothing());
}

TEST(Edges, ALogThatIsThrownAwayCanBeHadBack) {
    LiveOstrel live(steady);
    EXPECT_TRUE(within(30s, [&] { return live.isEnabled("mnuSaveLog"); })); // the log is on the disk
    live.press("mnuExit");
    live.await("Do you want to save the LOG file before exiting ");
    EXPECT_TRUE(live.ask([](auto) {
        QWidget *box = QApplication::activeModalWidget();
        QTest::keyClick(box, Qt::Key_Escape);
        box->close();
        return box->isVisible();
    }));
    live.press("No");
    EXPECT_TRUE(live.recorder().endsWithin(5s));
    EXPECT_EQ(live.entries("Log"), QStringList());
    ASSERT_EQ(live.entries("Discarded").size(), 1);
    EXPECT_EQ(live.entries("Discarded/" + live.entries("Discarded")[0]), QStringList{"Log00001.dat"});
}

TEST(Edges, ALogThatCannotBeReadNowIsOfferedNamedAndKept) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can run the recorder as another user";
    LiveOstrel live(steady);
    const QString file = live.file("data/ostrel/" + leaveLog(live) + "/Log00001.dat");
    ASSERT_TRUE(QFile::setPermissions(file, {}));
    live.startRecorder("frmDataRecovery", 54321);
    live.chooseLog();
    live.await("Log00001.dat: Permission denied");
    live.press("OK");
    live.nameFile("saved.chl");
    live.await("Unable to save the log file");
    live.press("OK");
    live.press("cmdDoneButton");
    live.await("Not all Log files have been recovered!");
    live.press("OK");
    live.takeName();
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_FALSE(QFile::exists(live.file("saved.chl")));
}

TEST(Edges, NotesAreInTheLogFromTheMomentTheyAreAccepted) {
    LiveOstrel live(steady);
    EXPECT_TRUE(holds(live, 5, 5));
    live.press("mnuNotes");
    live.type("txtNotes", "Column B");
    live.press("OK");
    // Logging begins at once whenever it is switched on, also just behind a look of the watchdog.
    for (int i = 0; i < 8; ++i) {
        for (const bool on : {false, true}) {
            live.press(on ? "mnuLogOn" : "mnuLogOff");
            EXPECT_EQ(live.ask([](auto) { return inside::find<QTimer>("TimerSaveLog").isActive(); }), on);
        }
        within(700ms, [] { return false; });
    }
    live.recorder().signal(SIGKILL);
    live.startRecorder("frmDataRecovery");
    live.chooseLog();
    live.nameFile("saved.chl");
    live.takeName();
    ChartData run;
    AxisValues axes;
    EXPECT_TRUE(loadChartFile(live.file("saved.chl"), run, axes).good());
    EXPECT_EQ(run.notes, "Column B");
    EXPECT_GE(run.samples.size(), 5);
}

TEST(Edges, AnErrorThatNobodyHandlesEndsNeitherTheRecordingNorTheProgram) {
    LiveOstrel live("kind status\nwait 8s\nbad E 5\nwait 2s\nbad E 5\nwait 2s\nbad E 5\nwait 10m\n");
    ASSERT_TRUE(QDir(live.file("data/ostrel")).mkdir("ChartErr.log")); // which cannot be written
    live.press("mnuStart");
    live.await("Run-time error '75':");
    const int held = live.held(0);
    EXPECT_TRUE(holds(live, 0, held + 30, 10s)); // under the box, past the other errors
    live.press("OK");
    EXPECT_EQ(live.windows(), QStringList{"frmMain"});
    EXPECT_EQ(live.entries("Log/" + live.entries("Log").value(0)).size(), 1); // the log was written at once
    EXPECT_TRUE(holds(live, 0, held + 40, 5s));
}

TEST(Edges, ALineThatNeverPausesIsDecodedAndNoiseIsSurvived) {
    // Sixteen pairs in each fifth of a second, without a pause for the decoder, and then noise.
    const QByteArray pairs = QByteArray("raw 96 55 3e 80 00 00 96 43 41 48 00 00\n").repeated(15) + "wait 0.2s\n";
    LiveOstrel live("kind letters\n" + pairs.repeated(75) + QByteArray("garbage 190\nwait 0.2s\n").repeated(25) +
                    "wait 10m\n");
    live.press("mnuStart");
    ASSERT_TRUE(holds(live, 0, 1, 5s));
    for (int second = 0; second < 5; ++second)
        EXPECT_TRUE(holds(live, 0, live.held(0) + 40, 1500ms));
    EXPECT_TRUE(within(20s, [&] { return !live.isLinked() || live.held(0) > 1100; }));
    within(7s, [] { return false; }); // the noise passes
    EXPECT_TRUE(within(10s, [&] { return live.isLinked(); }));
    EXPECT_EQ(live.windows(), QStringList{"frmMain"});
}

} // namespace
