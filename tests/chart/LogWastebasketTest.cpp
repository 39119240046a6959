// SPDX-License-Identifier: MIT
#include "chart/files/LogWastebasket.h"

#include "chart/RunFiles.h"
#include "chart/files/RecordFile.h"
#include "files/WhateverFails.h"

namespace {

const QDate today(2026, 11, 22);

struct LogWastebasketTest : testing::Test {
    void add(const QString &folder, const QStringList &files, const QByteArray &bytes = "x") const {
        ASSERT_TRUE(QDir(app.path()).mkpath(folder));
        for (const QString &file : files)
            lay(app.filePath(folder + u'/' + file), bytes);
    }
    QString in(const QString &folder) const { return names(app.filePath(folder)); }
    bool discard(FileOperations &disk = FileOperations::system()) const {
        return !moveToWastebasket(app.filePath("Log/17/"), wastebasket, today, disk);
    }

    QTemporaryDir app;
    QString wastebasket = app.filePath("Discarded");
};

TEST_F(LogWastebasketTest, takesTheFilesOfALogAndNothingElse) {
    add("Log/17", {"Log00001.dat", "Log00002.dat", "stray", "kept.CHL"});
    add("Log/17/folder", {"file"});
    ASSERT_TRUE(QFile::link("/nowhere", app.filePath("Log/17/link")));
    EXPECT_TRUE(discard());
    EXPECT_EQ(in("Log/17"), "folder kept.CHL"); // Qt does not list the broken link
    EXPECT_EQ(in("Discarded/17-2026-11-22"), "Log00001.dat Log00002.dat stray");
    EXPECT_EQ(QFile::permissions(wastebasket) & 0x77, QFile::Permissions());
    EXPECT_TRUE(discard());
    EXPECT_EQ(in("Discarded"), "17-2026-11-22 17-2026-11-22_2");
}

TEST_F(LogWastebasketTest, whateverFailsTheFilesAreAllInOnePlace) {
    whateverFails([this](FaultyDisk &disk) {
        QDir(app.filePath("Log")).removeRecursively();
        QDir(wastebasket).removeRecursively();
        add("Log/17", {"Log00001.dat", "Log00002.dat"}, QByteArray(100, 'x'));
        const bool moved = discard(disk);
        EXPECT_EQ(in("Log/17"), moved ? "" : "Log00001.dat Log00002.dat");
        EXPECT_EQ(discardedLogs(wastebasket).size(), moved ? 1U : 0U);
    });
}

/// A disk without second names of files, as memory sticks are.
struct PlainDisk : FaultyDisk {
    int link(const char *, const char *) override {
        errno = EPERM;
        return -1;
    }
};

TEST_F(LogWastebasketTest, anOldNameGoesOnlyWhenTheNewOneIsOnTheDisk) {
    struct Watched : FileOperations {
        int sync(int fd) override {
            ++flushes;
            return FileOperations::sync(fd);
        }
        int remove(const char *path) override {
            flushesBefore << flushes;
            return FileOperations::remove(path);
        }
        int flushes = 0;
        QList<int> flushesBefore;
    } disk;
    add("Log/17", {"Log00001.dat", "Log00002.dat"});
    EXPECT_TRUE(discard(disk));
    EXPECT_EQ(disk.flushesBefore, QList({3, 3})); // two folders were made, and the new one has its files
    PlainDisk plain;
    add("Log/17", {"Log00001.dat"});
    EXPECT_TRUE(discard(plain));
    EXPECT_EQ(in("Log/17") + in("Discarded/17-2026-11-22_2"), "Log00001.dat");
}

TEST_F(LogWastebasketTest, whatIsTooOldOrTooMuchGoesTheOldestFirst) {
    for (const char *name :
         {"1-2026-10-22", "2-2026-10-23", "3-2026-11-21", "4-2026-11-22", "4-2026-11-22_2", "mine", "5-2027-01-01"})
        add(QString("Discarded/") + name, {"Log00001.dat"}, QByteArray(100'000, 'x'));
    add("Discarded/4-2026-11-22", {"run"},
        FileHead::of(fourLetters("DATA"), 1).bytes() + QByteArray(300'000, 'x')); // an operator's
    ASSERT_TRUE(QFile::link(app.filePath("Discarded/mine"), app.filePath("Discarded/0-2020-01-01")));
    keepWastebasketLimits(wastebasket, today);
    EXPECT_EQ(in("Discarded"), "0-2020-01-01 2-2026-10-23 3-2026-11-21 4-2026-11-22 4-2026-11-22_2 5-2027-01-01 mine");
    keepWastebasketLimits(wastebasket, today, 350'000);
    EXPECT_EQ(in("Discarded"), "0-2020-01-01 4-2026-11-22 4-2026-11-22_2 5-2027-01-01 mine");
    EXPECT_EQ(in("Discarded/4-2026-11-22"), "Log00001.dat run");
    EXPECT_EQ(in("Discarded/mine"), "Log00001.dat"); // no link is followed
}

} // namespace
