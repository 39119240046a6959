// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"
#include "driver/LiveOstrel.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

const QByteArray steady = "kind status\nuv 0.1\nnoise uv 0.01\ncond 20\nwait 10m\n";

constexpr unsigned ordinaryUser = 54321;

QStringList entriesOf(const LiveOstrel &live, const QString &folder) {
    return QDir(live.file("data/ostrel/" + folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

bool holds(LiveOstrel &live, int chart, int samples) {
    return live->get(QString("Chart(%1)").arg(chart), "SampleCount").toInt() >= samples;
}

/// A recorder that has logged some samples comes to an end that nobody asked for; what is left is a left-over.
QString leaveLog(LiveOstrel &live) {
    EXPECT_TRUE(within(20s, [&] { return holds(live, 5, 20); }));
    live.recorder().terminate();
    EXPECT_TRUE(live.recorder().endsWithin(5000));
    EXPECT_EQ(entriesOf(live, "Log").size(), 1);
    return "Log/" + entriesOf(live, "Log").value(0);
}

/// In the recovery dialog, up to the dialog for the file.
void pressRecover(LiveOstrel &live) {
    live->click("lstLogFiles");
    live->key("Home");
    live->key("Space");
    ASSERT_TRUE(within(5s, [&] { return live.isEnabled("cmdRecoverButton"); }));
    live->click("cmdRecoverButton");
}

/// What the archive's tool says.
QString ostrelFile(const QStringList &arguments) {
    QProcess tool;
    tool.start(OSTREL_FILE_PROGRAM, arguments);
    EXPECT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
    return QString::fromUtf8(tool.readAllStandardOutput());
}

bool says(LiveOstrel &live, const char *text, std::chrono::seconds patience = 10s) {
    return within(patience, [&] { return live.boxText().contains(text); });
}

TEST(Edges, WhateverEndsTheProgramUnderTheRecoveryDialogTouchesNoLeftOver) {
    LiveOstrel live(steady);
    const QString left = leaveLog(live);
    const QString settings = live.file("config/ostrel/Ostrel MS.ini");
    const auto isUntouched = [&] {
        QFile store(settings);
        return entriesOf(live, left) == QStringList{"Log00001.dat"} && store.open(QIODevice::ReadOnly) &&
               store.readAll().contains(left.mid(4).toUtf8());
    };
    live.startRecorder("frmDataRecovery");
    live.recorder().terminate();
    EXPECT_TRUE(live.recorder().endsWithin(5000));
    EXPECT_TRUE(isUntouched());

    live.startRecorder("frmDataRecovery");
    EXPECT_TRUE(within(10s, [&] { return live.isLinked(); }));
    live.stopInstrument();
    ASSERT_TRUE(within(20s, [&] { return live.isUp("frmNoData"); }));
    live->answer("Exit");
    EXPECT_TRUE(live.recorder().endsWithin(5000));
    EXPECT_TRUE(isUntouched());
}

TEST(Edges, ALogThatIsThrownAwayCanBeHadBack) {
    LiveOstrel live(steady);
    EXPECT_TRUE(within(30s, [&] { return live.isEnabled("mnuSaveLog"); })); // the log is on the disk
    live->trigger("mnuExit");
    const char *question = "Do you want to save the LOG file before exiting ";
    ASSERT_TRUE(says(live, question));
    live->key("Escape");
    EXPECT_TRUE(says(live, question));
    live->call("MsgBox", "close");
    within(1s, [] { return false; });
    ASSERT_TRUE(says(live, question) && live.recorder().runs());
    live->answer("No");
    EXPECT_TRUE(live.recorder().endsWithin(5000));
    EXPECT_EQ(entriesOf(live, "Log"), QStringList());
    ASSERT_EQ(entriesOf(live, "Discarded").size(), 1);

    const QString folder = live.file("data/ostrel/Discarded/") + entriesOf(live, "Discarded")[0];
    const QString list = ostrelFile({"logs", live.file("data/ostrel")});
    EXPECT_TRUE(list.contains(folder) && list.contains("Missing:        nothing")) << list.toStdString();
    ostrelFile({"salvage", folder, live.file("back.chl")});
    ChartData run;
    AxisValues axes;
    EXPECT_TRUE(loadChartFile(live.file("back.chl"), run, axes).good());
    EXPECT_GE(run.samples.size(), 20);
}

TEST(Edges, ALogThatCannotBeReadNowIsOfferedNamedAndKept) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can run the recorder as another user";
    LiveOstrel live(steady);
    const QString file = live.file("data/ostrel/" + leaveLog(live) + "/Log00001.dat");
    ASSERT_TRUE(QFile::setPermissions(file, {}));
    live.startRecorder("frmDataRecovery", ordinaryUser);
    pressRecover(live);
    EXPECT_TRUE(says(live, "Log00001.dat: Permission denied"));
    live->answer("OK");
    live.nameFile("saved.chl");
    EXPECT_TRUE(says(live, "Unable to save the log file"));
    live->answer("OK");
    EXPECT_TRUE(within(5s, [&] { return live.boxText().isEmpty(); }));
    live->click("cmdDoneButton");
    EXPECT_TRUE(says(live, "Not all Log files have been recovered!"));
    live->answer("OK");
    live.takeName();
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_FALSE(live.fileExists("saved.chl"));
}

TEST(Edges, NotesAreInTheLogFromTheMomentTheyAreAccepted) {
    LiveOstrel live(steady);
    EXPECT_TRUE(within(20s, [&] { return holds(live, 5, 5); }));
    live->trigger("mnuNotes");
    live.await("frmNotes");
    live->type("txtNotes", "Column B");
    live->answer("OK");
    EXPECT_TRUE(within(5s, [&] { return !live.isUp("frmNotes"); }));
    // Logging begins at once whenever it is switched on, also just behind a look of the watchdog.
    for (int i = 0; i < 8; ++i) {
        live->trigger("mnuLogOff");
        EXPECT_TRUE(within(2s, [&] { return !live->get("TimerSaveLog", "active").toBool(); }));
        live->trigger("mnuLogOn");
        EXPECT_TRUE(within(2s, [&] { return live->get("TimerSaveLog", "active").toBool(); }));
        within(700ms, [] { return false; });
    }
    live.recorder().kill();
    EXPECT_TRUE(within(5s, [&] { return !live.recorder().runs(); }));
    live.startRecorder("frmDataRecovery");
    pressRecover(live);
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
    ASSERT_TRUE(within(10s, [&] { return live.isEnabled("mnuStart"); }));
    live->trigger("mnuStart");
    EXPECT_TRUE(says(live, "Run-time error '75':", 15s));
    const int held = live->get("Chart(0)", "SampleCount").toInt();
    EXPECT_TRUE(within(10s, [&] { return holds(live, 0, held + 30); })); // under the box, past the other errors
    live->answer("OK");
    EXPECT_TRUE(within(5s, [&] { return live.boxText().isEmpty(); }));
    EXPECT_EQ(entriesOf(live, "Log/" + entriesOf(live, "Log").value(0)).size(), 1); // the log was written at once
    EXPECT_TRUE(within(5s, [&] { return holds(live, 0, held + 40); }));
    EXPECT_TRUE(live.recorder().runs());
}

/// The line brings so many pairs in each fifth of a second, without a pause for the decoder.
QByteArray chattering(int pairs) {
    const QByteArray pair = "raw 96 55 3e 80 00 00 96 43 41 48 00 00\n";
    return pair.repeated(pairs - 1) + "wait 0.2s\n";
}

TEST(Edges, ALineThatNeverPausesIsDecodedAndNoiseIsSurvived) {
    LiveOstrel live("kind letters\n" + chattering(16).repeated(75) +
                    QByteArray("garbage 190\nwait 0.2s\n").repeated(25) + "wait 10m\n");
    ASSERT_TRUE(within(10s, [&] { return live.isEnabled("mnuStart"); }));
    live->trigger("mnuStart");
    ASSERT_TRUE(within(5s, [&] { return holds(live, 0, 1); }));
    for (int second = 0; second < 5; ++second) {
        const int before = live->get("Chart(0)", "SampleCount").toInt();
        EXPECT_TRUE(within(1500ms, [&] { return holds(live, 0, before + 40); }));
    }
    EXPECT_TRUE(within(20s, [&] { return !live.isLinked() || live->get("Chart(0)", "SampleCount").toInt() > 1100; }));
    within(7s, [] { return false; }); // the noise passes
    EXPECT_TRUE(within(10s, [&] { return live.isLinked(); }));
    EXPECT_TRUE(live.recorder().runs());
    EXPECT_EQ(live.boxText(), "");
}

} // namespace
