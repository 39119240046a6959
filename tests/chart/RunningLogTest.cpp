// SPDX-License-Identifier: MIT
#include "chart/RunFiles.h"
#include "chart/files/RunningLogFiles.h"
#include "chart/files/RunningLogReader.h"
#include "chart/files/RunningLogWriter.h"
#include "files/WhateverFails.h"
#include "fuzz/Corpus.h"
#include "fuzz/LogScenario.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <map>

namespace {

using namespace testing;

constexpr double aMinute = 1.0 / 60; // the least size of a data file: 300 samples

struct RunningLogTest : Test {
    /// What comes between two ticks of the timer: some samples, a mark, now and then a method. Each sample is unlike
    /// every other, and its bits are no number that arithmetic would leave alone.
    void live(int samples = 7) {
        while (samples-- > 0) {
            const auto number = static_cast<quint32>(run.samples.size());
            run.samples.append({std::bit_cast<float>(0x7fa00000U + number), static_cast<float>(number)});
        }
        run.marks.push_back({QStringLiteral("M%1").arg(run.marks.size()), 0x0000ff, -10, run.lastTime()});
        if (run.marks.size() % 3 == 0)
            run.methodTexts.push_back({QStringLiteral("Gradient \u00e4\r\n"), run.lastTime()});
    }
    std::error_code tick(double hours = 24) { return writer.write(run, path + u'/', 1, hours); }
    void record(int samples = 7, double hours = 24) {
        live(samples);
        EXPECT_FALSE(tick(hours));
    }
    QString file(int number) const { return path + u'/' + logFileName(number); }
    /// How many samples of the run the log holds; -1 when one of them is not the run's.
    qint64 heldSamples(const RecoveredLog &log) const {
        return print(run.samples).startsWith(print(log.data.samples)) ? log.data.samples.size() : -1;
    }
    /// How long the file is before what is laid out ahead.
    static qsizetype written(const QByteArray &log) { return log.lastIndexOf("END ") + 24 + 24; }
    static bool standsAt(const QString &directory) { return findRunningLog(directory) == LogFinding::Log; }
    void expectAll() const {
        const RecoveredLog log = readRunningLog(path);
        EXPECT_TRUE(log.whole());
        EXPECT_EQ(print(log.data), print(run));
        EXPECT_EQ(standsAt(path), !log.empty());
    }

    QTemporaryDir folder;
    QString path = folder.path();
    ChartData run;
    RunningLogWriter writer;
};

TEST_F(RunningLogTest, dataFilesOfTheirSizeHoldTheRun) {
    EXPECT_FALSE(tick());
    expectAll();
    for (int i = 0; i < 10; ++i) {
        record(100, aMinute);
        EXPECT_FALSE(tick(aMinute)); // nothing new
        expectAll();
    }
    for (const double hours : {0.0, -1.0, std::nan(""), 1e300})
        record(7, hours);
    EXPECT_EQ(names(path), "Log00001.dat Log00002.dat Log00003.dat Log00004.dat");
    ASSERT_TRUE(QFile::resize(file(4), qint64{1} << 40)); // a hole costs nothing
    expectAll();
}

TEST_F(RunningLogTest, aRecoveredRunKnowsItsBirth) {
    const QDateTime noon(QDate(2026, 11, 22), QTime(12, 0), Qt::OffsetFromUTC, 3600);
    Provenance &birth = run.provenance;
    birth.identity = "abc";
    birth.system = "Velquin 2";
    birth.stretches = {{0, 0.01, noon, noon.addSecs(1)}};
    record(300);
    birth.stretches = {{0, 1, noon, noon.addSecs(61)}, {1.5, 1.6, noon.addSecs(120), noon.addSecs(126)}};
    birth.clockSteps = {{0.5, 2}};
    record(300);
    const QByteArray written = content(file(1));
    birth.stretches.back().ended = noon.addSecs(127); // it moves with every pass, which is nothing to write
    EXPECT_FALSE(tick());
    EXPECT_EQ(content(file(1)), written);
    const double last = ChartData::timeOf(599);
    birth.stretches.back().to = last; // as the samples tell
    birth.stretches.back().ended = noon.addMSecs(120'000 + std::llround((last - 1.5) * 60000));
    const Provenance found = readRunningLog(path).data.provenance;
    EXPECT_EQ(found, birth);

    writer.close();
    run = {}; // a second run in the same directory
    run.provenance.identity = "def";
    run.provenance.stretches = {{0.1, 0, noon.addDays(1), {}}};
    record(60);
    const Provenance both = readRunningLog(path).data.provenance;
    EXPECT_EQ(both.identity, "abc");
    ASSERT_EQ(both.stretches.size(), 3U);
    EXPECT_NEAR(both.stretches[2].from, 2.1, 1e-9);
}

TEST_F(RunningLogTest, whateverFailsLosesNothingSafeAndIsMadeUpForLater) {
    whateverFails([this](FaultyDisk &disk) {
        const QTemporaryDir own;
        path = own.path();
        run = {};
        RunningLogWriter faulty(disk);
        qint64 safe = 0;
        int failures = 0;
        for (int i = 0; i < 4; ++i) {
            live(160);
            const bool failed(faulty.write(run, path, 1, aMinute));
            failures += failed;
            safe = failed ? safe : run.samples.size();
            EXPECT_GE(heldSamples(readRunningLog(path)), safe);
        }
        EXPECT_LE(failures, 1);
        EXPECT_FALSE(faulty.write(run, path, 1, aMinute));
        expectAll();
    });
}

TEST_F(RunningLogTest, aLogCutAnywhereHoldsAllBeforeTheCut) {
    std::map<qsizetype, qint64> safe{{0, 0}}; // samples in so much of the file
    for (int i = 0; i < 4; ++i) {
        record();
        safe[written(content(file(1)))] = run.samples.size();
    }
    const QByteArray all = content(file(1));
    for (qsizetype cut = 0; cut < written(all) + 20; ++cut) {
        SCOPED_TRACE(cut);
        for (const QByteArray &behind : {QByteArray(), QByteArray(300, '\0'), QByteArray(300, '\x5a')}) {
            lay(file(1), all.first(cut) + behind);
            const RecoveredLog log = readRunningLog(path);
            EXPECT_GE(heldSamples(log), std::prev(safe.upper_bound(cut))->second);
            EXPECT_TRUE(log.gaps.empty());
            EXPECT_EQ(standsAt(path), !log.empty());
        }
    }
}

TEST_F(RunningLogTest, aByteGoneBadCostsItsRecordAloneAndIsTold) {
    for (const char *identity : {"", "abc"}) { // a log that does not know its birth, as older ones, and one that does
        run = {};
        run.title = "Anna 2";
        run.provenance.identity = identity;
        writer.close();
        QFile::remove(file(1));
        for (int i = 0; i < 4; ++i) {
            run.notes = QString("column %1").arg(i / 3);
            record();
        }
        run.methodTexts.push_back({"the last of all", run.lastTime()});
        ASSERT_FALSE(tick());
        const QByteArray all = content(file(1));
        for (qsizetype place = 0; place < written(all); ++place) {
            SCOPED_TRACE(place);
            lay(file(1), flipped(all, place));
            const RecoveredLog log = readRunningLog(path);
            const bool same = print(log.data) == print(run) && log.data.provenance == run.provenance;
            EXPECT_EQ(log.whole(), same);
            EXPECT_EQ(log.data.samples.size(), run.samples.size());
            EXPECT_LE(log.gaps.size() + log.lostMarks + log.lostMethodTexts + (log.lostTexts ? 1 : 0), 1U);
        }
    }
}

TEST_F(RunningLogTest, aLogOfWhichNothingIsWholeIsNotTakenForOneThatNeverHeldAny) {
    record();
    QByteArray bytes = content(file(1));
    for (const char *kind : {"SAMP", "MARK", "END "})
        bytes = flipped(bytes, bytes.indexOf(kind) + 5);
    lay(file(1), bytes);
    EXPECT_EQ(findRunningLog(path), LogFinding::Damage);
    lay(file(1), bytes.first(FileHead::size) + QByteArray(5000, '\0')); // the power went in the first writing
    EXPECT_EQ(findRunningLog(path), LogFinding::Nothing);
}

TEST_F(RunningLogTest, aDamagedSpotInALongWritingCostsTenMinutesAtMost) {
    record(100'000);
    lay(file(1), flipped(content(file(1)), 500'000));
    const RecoveredLog log = readRunningLog(path);
    EXPECT_THAT(log.gaps, ElementsAre(FieldsAre(_, Lt(3000), true)));
    EXPECT_EQ(log.data.samples.size(), run.samples.size());
}

TEST_F(RunningLogTest, aMissingFileIsBridgedAndTold) {
    for (int i = 0; i < 5; ++i)
        record(300, aMinute);
    lay(file(2), flipped(content(file(2)), 16)); // an identity that only the files beside it tell
    expectAll();
    ASSERT_TRUE(QFile::remove(file(2)));
    const RecoveredLog log = readRunningLog(path);
    EXPECT_THAT(log.gaps, ElementsAre(FieldsAre(300, 300, true)));
    EXPECT_EQ(log.data.lastTime(), run.lastTime());
    EXPECT_EQ(log.lostMarks, 1U);
    EXPECT_EQ(log.data.marks.back().time, run.marks.back().time);
}

TEST_F(RunningLogTest, whatVanishesIsWrittenAgain) {
    path = folder.filePath("deep/log");
    live(300);
    EXPECT_TRUE(tick()); // who gives us a directory makes it
    ASSERT_TRUE(QDir().mkpath(path));
    record(300, aMinute);
    ASSERT_TRUE(QDir(folder.filePath("deep")).removeRecursively());
    EXPECT_FALSE(tick(aMinute));
    expectAll();
    ASSERT_TRUE(QFile::remove(path + u'/' + names(path).section(u' ', 0, 0))); // found out with the next file
    record(300, aMinute);
    expectAll();
    path = folder.path(); // another directory gets all of it
    EXPECT_FALSE(tick());
    expectAll();
}

TEST_F(RunningLogTest, runsInOneDirectoryStandOneBehindTheOther) {
    record(300);
    writer.close();
    run = {};
    record(300);
    EXPECT_EQ(names(path), "Log00001.dat Log00002.dat");
    const RecoveredLog log = readRunningLog(path);
    EXPECT_TRUE(log.whole());
    EXPECT_EQ(log.data.samples.size(), 600);
    EXPECT_THAT(log.data.marks, ElementsAre(_, Field(&EventMark::time, FloatEq(1 + run.lastTime()))));
}

TEST_F(RunningLogTest, strangeFilesDisturbNobody) {
    record();
    lay(path + "/notes.txt", "mine");
    lay(file(7), {}); // made when the power went
    lay(path + "/Run.chd", FileHead::of(fourLetters("DATA"), 1).bytes());
    ASSERT_TRUE(QDir(path).mkdir("Folder") && QFile::link("/nowhere", path + "/link"));
    expectAll();
    lay(file(8), FileHead::of(runningLogKind, runningLogVersion + 1).bytes());
    const RecoveredLog log = readRunningLog(path);
    EXPECT_EQ(heldSamples(log), run.samples.size());
    EXPECT_THAT(log.badFiles, ElementsAre(FieldsAre(file(8), std::errc::not_supported)));
    for (const QString &none : {path + "/Folder", path + "/none", QString()})
        EXPECT_EQ(findRunningLog(none), LogFinding::Nothing);
}

TEST_F(RunningLogTest, whatCannotBeReadIsNeverTakenForEmpty) {
    for (int i = 0; i < 3; ++i)
        record(3000, aMinute * 10);
    lay(file(2), "xyz" + content(file(2)).mid(3));
    ASSERT_TRUE(QFile::rename(file(3), path + "/old copy"));
    const auto glancing = [this](FaultyDisk &disk) {
        const LogFinding found = findRunningLog(path, disk);
        EXPECT_EQ(found, disk.struck() ? LogFinding::Unread : LogFinding::Log);
    };
    const auto reading = [this](FaultyDisk &disk) {
        const RecoveredLog log = readRunningLog(path, disk);
        EXPECT_NE(log.badFiles.empty(), disk.struck());
        EXPECT_THAT(log.badFiles, Each(Property(&BadLogFile::isUnread, true)));
    };
    whateverFails<DyingDisk>(glancing, 4096);
    whateverFails<DyingDisk>(reading, 4096);
    FaultyDisk disk(2); // the old copy's head
    emptyLogDirectory(path, disk);
    EXPECT_EQ(names(path), "old copy");
}

TEST(LogCorpus, everyKnownDirectoryHoldsTogether) { playCorpus<LogScenario>(QStringLiteral(LOG_CORPUS)); }

} // namespace
