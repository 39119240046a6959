// SPDX-License-Identifier: MIT
#include "chart/files/LogWastebasket.h"
#include "chart/files/RunningLogFiles.h"
#include "chart/files/RunningLogReader.h"
#include "chart/files/RunningLogWriter.h"
#include "fakes/FaultyDisk.h"
#include "fuzz/Corpus.h"
#include "fuzz/LogScenario.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

constexpr double aMinute = 1.0 / 60; // the least size of a data file: 300 samples

/// Each sample is unlike every other, and its bits are no number that arithmetic would leave alone.
SamplePair sampleOf(qint64 number) {
    return {std::bit_cast<float>(0x7fa00000U + static_cast<quint32>(number)), static_cast<float>(number)};
}

/// A disk that cannot read one file from a place on.
class BadSectors : public FileOperations {
public:
    BadSectors(const QString &path, off_t from) : path_(QFile::encodeName(path)), from_(from) {}
    int open(const char *path, int flags, mode_t mode) override {
        const int fd = path == path_ && from_ == 0 ? -1 : FileOperations::open(path, flags, mode);
        bad_ = path == path_ ? fd : -1; // one is open at a time
        errno = EIO;
        return fd;
    }
    ssize_t readAt(int fd, const iovec *pieces, int count, off_t position) override {
        if (fd != bad_)
            return FileOperations::readAt(fd, pieces, count, position);
        for (int i = 0; i < count; position += static_cast<off_t>(pieces[i++].iov_len)) {
            const off_t most = std::min(static_cast<off_t>(pieces[i].iov_len), from_ - position);
            const iovec piece{pieces[i].iov_base, static_cast<std::size_t>(std::max<off_t>(most, 0))};
            if (piece.iov_len > 0)
                return FileOperations::readAt(fd, &piece, 1, position);
        }
        errno = EIO;
        return -1;
    }

private:
    QByteArray path_;
    off_t from_;
    int bad_ = -1;
};

class RunningLogTest : public testing::Test {
protected:
    void addSamples(int count) {
        while (count-- > 0)
            run.samples.append(sampleOf(run.samples.size()));
    }
    void addMark(const QString &label) { run.marks.push_back({label, 0x0000ff, -10, run.lastTime()}); }
    /// What a tick of the timer brings: some samples, a mark, now and then a method.
    void live(int samples = 7) {
        addSamples(samples);
        addMark(QStringLiteral("M%1").arg(run.marks.size()));
        if (run.marks.size() % 3 == 0)
            run.methodTexts.push_back({QStringLiteral("Gradient \u00e4\r\n"), run.lastTime()});
    }
    std::error_code tick(RunningLogWriter &writer, double hours = 24) const {
        return writer.write(run, path + u'/', 1, hours);
    }
    QStringList names() const { return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot); }
    QString file(int number) const { return path + u'/' + logFileName(number); }
    static QByteArray content(const QString &name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void lay(const QString &name, const QByteArray &content) const {
        QFile file(path + u'/' + name);
        file.remove(); // or the file system would flush the new content
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    /// How many samples of the run the log holds; -1 when one of them is not the run's.
    static qint64 heldSamples(const RecoveredLog &log) {
        for (qint64 i = 0; i < log.data.samples.size(); ++i) {
            const SamplePair held = log.data.samples.at(i);
            const SamplePair given = sampleOf(i);
            if (std::memcmp(&held, &given, sizeof held) != 0)
                return -1;
        }
        return log.data.samples.size();
    }
    static bool standsAt(const QString &directory) { return glanceAtRunningLog(directory) == LogGlance::Log; }
    bool holdsAll(const RecoveredLog &log) const {
        const auto sameMark = [](const EventMark &a, const EventMark &b) {
            return a.label == b.label && a.time == b.time && a.height == b.height && a.color == b.color;
        };
        const auto sameText = [](const MethodText &a, const MethodText &b) {
            return a.text == b.text && a.time == b.time;
        };
        return heldSamples(log) == run.samples.size() && log.data.title == run.title && log.data.notes == run.notes &&
               std::ranges::equal(log.data.marks, run.marks, sameMark) &&
               std::ranges::equal(log.data.methodTexts, run.methodTexts, sameText);
    }
    void expectAll() const {
        const RecoveredLog log = readRunningLog(path);
        EXPECT_TRUE(log.whole());
        EXPECT_TRUE(holdsAll(log));
        EXPECT_EQ(standsAt(path), !log.empty());
    }

    QTemporaryDir folder;
    QString path = folder.path();
    ChartData run;
};

TEST_F(RunningLogTest, dataFilesOfTheirSizeHoldTheRun) {
    RunningLogWriter writer;
    EXPECT_FALSE(tick(writer));
    EXPECT_FALSE(standsAt(path));
    EXPECT_TRUE(readRunningLog(path).empty());
    for (int i = 0; i < 10; ++i) {
        live(100);
        EXPECT_FALSE(tick(writer, aMinute));
        EXPECT_FALSE(tick(writer, aMinute)); // nothing new
        expectAll();
    }
    EXPECT_EQ(names(), (QStringList{"Log00001.dat", "Log00002.dat", "Log00003.dat", "Log00004.dat"}));
    for (const double hours : {0.0, -1.0, std::nan(""), 1e300}) {
        live();
        EXPECT_FALSE(tick(writer, hours));
    }
    EXPECT_EQ(names().size(), 4);
    expectAll();
}

TEST_F(RunningLogTest, whateverFailsLosesNothingSafeAndIsMadeUpForLater) {
    for (const int error : {ENOSPC, EIO, EACCES}) {
        for (int failing = 1, struck = true; struck != 0; ++failing) {
            SCOPED_TRACE(failing);
            const QTemporaryDir own;
            path = own.path();
            run = {};
            FaultyDisk disk(failing, error);
            RunningLogWriter writer(disk);
            qint64 safe = 0;
            int failures = 0;
            for (int i = 0; i < 4; ++i) {
                live(160);
                if (tick(writer, aMinute))
                    ++failures;
                else
                    safe = run.samples.size();
                EXPECT_GE(heldSamples(readRunningLog(path)), safe);
            }
            EXPECT_LE(failures, 1);
            EXPECT_FALSE(tick(writer, aMinute));
            expectAll();
            struck = disk.struck();
        }
    }
}

TEST_F(RunningLogTest, aLogCutAnywhereHoldsAllBeforeTheCut) {
    RunningLogWriter writer;
    std::vector<std::pair<qsizetype, qint64>> safe; // length of the file, samples in it
    for (int i = 0; i < 4; ++i) {
        live();
        ASSERT_FALSE(tick(writer));
        QByteArray all = content(file(1));
        while (all.endsWith('\0'))
            all.chop(1);
        safe.emplace_back(all.size(), run.samples.size());
    }
    const QByteArray all = content(file(1));
    for (qsizetype cut = 0; cut < safe.back().first + 20; ++cut) {
        SCOPED_TRACE(cut);
        qint64 least = 0;
        for (const auto &[length, samples] : safe)
            least = cut >= (length + 7) / 8 * 8 ? samples : least;
        const QByteArray zeros(300, '\0');
        for (const QByteArray &behind : {QByteArray(), zeros, QByteArray(zeros.size(), '\x5a')}) {
            lay("Log00001.dat", all.first(cut) + behind);
            const RecoveredLog log = readRunningLog(path);
            EXPECT_GE(heldSamples(log), least);
            EXPECT_TRUE(log.gaps.empty());
            EXPECT_EQ(standsAt(path), !log.empty());
        }
    }
}

TEST_F(RunningLogTest, aByteGoneBadCostsItsRecordAloneAndIsTold) {
    RunningLogWriter writer;
    run.title = "Anna 2";
    for (int i = 0; i < 4; ++i) {
        live();
        run.notes = QString("column %1").arg(i / 3);
        ASSERT_FALSE(tick(writer));
    }
    run.methodTexts.push_back({"the last of all", run.lastTime()});
    ASSERT_FALSE(tick(writer));
    const QByteArray all = content(file(1));
    for (qsizetype place = 0; all.mid(place).count('\0') < all.size() - place; ++place) {
        SCOPED_TRACE(place);
        QByteArray bad = all;
        bad[place] = static_cast<char>(bad[place] ^ 0x10);
        lay("Log00001.dat", bad);
        const RecoveredLog log = readRunningLog(path);
        EXPECT_EQ(log.whole(), holdsAll(log));
        EXPECT_EQ(log.data.samples.size(), run.samples.size());
        EXPECT_LE(log.gaps.size() + log.lostMarks + log.lostMethodTexts + (log.lostTexts ? 1 : 0), 1U);
    }
    lay("Log00001.dat", "x" + all);
    EXPECT_EQ(readRunningLog(path).badFiles.size(), 1U);
}

TEST_F(RunningLogTest, aGlanceTellsALogOfWhichNothingIsWholeFromOneThatNeverHeldAny) {
    RunningLogWriter writer;
    live();
    ASSERT_FALSE(tick(writer));
    const QByteArray all = content(file(1));
    const auto damage = [](QByteArray bytes, const char *record, int at) {
        const auto place = bytes.indexOf(record) + at;
        bytes[place] = static_cast<char>(bytes[place] ^ 1);
        return bytes;
    };
    constexpr int payload = RecordHead::size;
    for (const int at : {5, payload}) { // in their heads, in what they hold
        QByteArray bad = damage(damage(all, "SAMP", at), "MARK", at);
        lay("Log00001.dat", bad);
        EXPECT_TRUE(standsAt(path)); // its promise tells that there were samples
        EXPECT_FALSE(readRunningLog(path).whole());
        bad = damage(bad, "END ", at);
        lay("Log00001.dat", bad);
        EXPECT_EQ(glanceAtRunningLog(path), LogGlance::Damage);
    }
    for (const QByteArray &bare : {all.first(FileHead::size) + QByteArray(5000, '\0'), all.first(100)}) {
        lay("Log00001.dat", bare); // the power went in the first writing
        EXPECT_EQ(glanceAtRunningLog(path), LogGlance::Nothing);
    }
}

TEST_F(RunningLogTest, aDamagedSpotInALongWritingCostsAnHourAtMost) {
    RunningLogWriter writer;
    live(100'000);
    ASSERT_FALSE(tick(writer));
    expectAll();
    QByteArray bad = content(file(1));
    bad[500'000] = static_cast<char>(bad[500'000] ^ 1);
    lay("Log00001.dat", bad);
    const RecoveredLog log = readRunningLog(path);
    ASSERT_EQ(log.gaps.size(), 1U);
    EXPECT_LT(log.gaps[0].length, 60);
    EXPECT_EQ(log.data.samples.size(), run.samples.size());
    EXPECT_FALSE(log.lostTexts || log.lostMarks > 0);
}

TEST_F(RunningLogTest, aMissingFileIsBridgedOrLeftOutAndTold) {
    RunningLogWriter writer;
    for (int i = 0; i < 5; ++i) {
        live(300);
        ASSERT_FALSE(tick(writer, aMinute));
    }
    QByteArray other = content(file(2));
    other[16] = static_cast<char>(~other[16]); // an identity that only the files beside it tell
    lay("Log00002.dat", other);
    expectAll();
    ASSERT_TRUE(QFile::remove(file(2)));
    RecoveredLog log = readRunningLog(path);
    ASSERT_EQ(log.gaps.size(), 1U);
    EXPECT_TRUE(log.gaps[0].at == 1 && log.gaps[0].length == 1 && log.gaps[0].filled);
    EXPECT_EQ(log.data.lastTime(), run.lastTime());
    EXPECT_EQ(log.lostMarks, 1U);
    EXPECT_EQ(log.data.marks.back().time, run.marks.back().time);

    // Four minutes of one: no directory of this size has lost so much.
    for (const int number : {1, 3, 4})
        ASSERT_TRUE(QFile::remove(file(number)));
    lay("Log00005.dat", content(file(5)).first(48 + 24 + 8 + 300 * 8 + 64));
    log = readRunningLog(path);
    ASSERT_EQ(log.gaps.size(), 1U);
    EXPECT_TRUE(log.gaps[0].at == 0 && log.gaps[0].length == 4 && !log.gaps[0].filled);
    EXPECT_EQ(log.data.samples.size(), 300);
    EXPECT_NEAR(log.data.marks.back().time, 299 / 300.0, 1e-6);
}

TEST_F(RunningLogTest, whatVanishesIsWrittenAgain) {
    path = folder.filePath("deep/log");
    RunningLogWriter writer;
    live(300);
    EXPECT_TRUE(tick(writer)); // who gives us a directory makes it
    ASSERT_TRUE(QDir().mkpath(path));
    EXPECT_FALSE(tick(writer, aMinute));
    live(300);
    EXPECT_FALSE(tick(writer, aMinute));
    ASSERT_TRUE(QDir(folder.filePath("deep")).removeRecursively());
    EXPECT_FALSE(tick(writer, aMinute));
    expectAll();
    ASSERT_TRUE(QFile::remove(path + u'/' + names().first())); // not the one being written: found out with the next
    live(300);
    EXPECT_FALSE(tick(writer, aMinute));
    expectAll();
    path = folder.path(); // another directory gets all of it
    EXPECT_FALSE(tick(writer));
    expectAll();
}

TEST_F(RunningLogTest, runsInOneDirectoryStandOneBehindTheOther) {
    for (int i = 0; i < 2; ++i) {
        RunningLogWriter writer;
        run = {};
        live(300);
        ASSERT_FALSE(tick(writer));
    }
    EXPECT_EQ(names(), (QStringList{"Log00001.dat", "Log00002.dat"}));
    const RecoveredLog log = readRunningLog(path);
    EXPECT_TRUE(log.whole());
    EXPECT_EQ(log.data.samples.size(), 600);
    ASSERT_EQ(log.data.marks.size(), 2U);
    EXPECT_FLOAT_EQ(log.data.marks[1].time, 1 + run.lastTime());
}

TEST_F(RunningLogTest, strangeFilesDisturbNobodyAndCloseLeavesNone) {
    RunningLogWriter writer;
    live();
    ASSERT_FALSE(tick(writer));
    lay("notes.txt", "mine");
    lay("Log00007.dat", QByteArray()); // made when the power went
    lay("Run.chd", FileHead::of(fourLetters("DATA"), 1).bytes());
    ASSERT_TRUE(QDir(path).mkdir("Folder"));
    ASSERT_TRUE(QFile::link("/nowhere", path + "/link"));
    expectAll();
    lay("Log00008.dat", FileHead::of(runningLogKind, runningLogVersion + 1).bytes());
    const RecoveredLog log = readRunningLog(path);
    EXPECT_EQ(heldSamples(log), run.samples.size());
    ASSERT_EQ(log.badFiles.size(), 1U);
    EXPECT_EQ(log.badFiles[0].error, std::errc::not_supported);

    emptyLogDirectory(QString()); // old copy that ends before it has a directory
    emptyLogDirectory(path + u'/');
    EXPECT_EQ(names(), (QStringList{"Folder", "Run.chd"}));
    EXPECT_FALSE(standsAt(path));
    EXPECT_FALSE(standsAt(path + "/none"));
    EXPECT_FALSE(standsAt(QString()));
}

TEST_F(RunningLogTest, whatCannotBeReadIsNeverTakenForEmpty) {
    RunningLogWriter writer;
    for (int i = 0; i < 2; ++i) {
        live(9000);
        ASSERT_FALSE(tick(writer, aMinute * 30));
    }
    const QByteArray all = content(file(2));
    for (const bool headStands : {true, false}) {
        lay("Log00002.dat", (headStands ? all.first(3) : QByteArray("xyz")) + all.mid(3));
        for (const off_t from : {0, 30, 60, 4096, 70'000}) {
            SCOPED_TRACE(from);
            BadSectors disk(file(2), from);
            EXPECT_EQ(readRunningLog(path, disk).badFiles.size(), 1U);
            EXPECT_EQ(glanceAtRunningLog(path, disk), LogGlance::Unread);
        }
    }
    ASSERT_TRUE(QFile::rename(file(2), path + "/old copy") && QFile::copy(file(1), path + "/Run.chd"));
    for (const off_t from : {0, 30}) {
        BadSectors disk(path + "/old copy", from);
        EXPECT_EQ(glanceAtRunningLog(path, disk), LogGlance::Unread);
        EXPECT_TRUE(moveToWastebasket(path, folder.filePath("Discarded"), QDate(2026, 11, 22), disk));
        EXPECT_EQ(names(), (QStringList{"Log00001.dat", "old copy", "Run.chd"}));
    }
    BadSectors document(path + "/Run.chd", 0); // which is none of our business
    EXPECT_EQ(glanceAtRunningLog(path, document), LogGlance::Log);
    BadSectors disk(path + "/old copy", 30);
    emptyLogDirectory(path, disk);
    EXPECT_EQ(names(), (QStringList{"old copy", "Run.chd"}));
}

TEST_F(RunningLogTest, garbageCostsAGlanceLittleAndHolesCostNothing) {
    const QByteArray head = FileHead::of(runningLogKind, runningLogVersion).bytes();
    QByteArray garbage(12 << 20, '\0');
    for (qsizetype i = 0; i < garbage.size(); ++i)
        garbage[i] = static_cast<char>(i * 2654435761U >> 13);
    for (const QByteArray &beginning : {QByteArray(), head}) {
        lay("Log00001.dat", beginning + garbage);
        EXPECT_TRUE(standsAt(path)); // what lies further on is for a closer look
        EXPECT_TRUE(readRunningLog(path).empty());
    }
    ASSERT_TRUE(QFile::remove(file(1)));
    RunningLogWriter writer;
    live();
    ASSERT_FALSE(tick(writer));
    QFile sparse(file(1));
    ASSERT_TRUE(sparse.resize(qint64{20} << 30));
    expectAll();
    sparse.setFileName(file(2));
    ASSERT_TRUE(sparse.open(QIODevice::WriteOnly) && sparse.write(QByteArray(100, 'x')) == 100 &&
                sparse.resize(qint64{20} << 30));
    const RecoveredLog log = readRunningLog(path);
    EXPECT_EQ(heldSamples(log), run.samples.size());
    EXPECT_EQ(log.badFiles.size(), 1U);
}

TEST(LogCorpus, everyKnownDirectoryHoldsTogether) { playCorpus<LogScenario>(QStringLiteral(LOG_CORPUS)); }

} // namespace
