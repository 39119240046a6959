// SPDX-License-Identifier: MIT
#include "chart/files/LogWastebasket.h"

#include "chart/files/RecordFile.h"
#include "chart/files/RunningLogFiles.h"
#include "fakes/FaultyDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QDate today(2026, 11, 22);

class LogWastebasketTest : public testing::Test {
protected:
    void lay(const QString &name, const QByteArray &content = "x") const {
        ASSERT_TRUE(QDir(app.path()).mkpath(QFileInfo(name).path()));
        QFile file(app.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QString names(const QString &folder) const {
        return QDir(app.filePath(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).join(' ');
    }
    std::error_code discard(FileOperations &disk = FileOperations::system()) const {
        return moveToWastebasket(app.filePath("Log/17/"), wastebasket, today, disk);
    }

    QTemporaryDir app;
    QString wastebasket = app.filePath("Discarded");
};

TEST_F(LogWastebasketTest, takesTheFilesOfALogAndNothingElse) {
    for (const char *name : {"Log00001.dat", "Log00002.dat", "stray", "kept.CHL", "folder/file"})
        lay(QString("Log/17/") + name);
    lay("Log/17/run", FileHead::of(fourLetters("DATA"), 1).bytes());
    ASSERT_TRUE(QFile::link("/nowhere", app.filePath("Log/17/link")));
    EXPECT_FALSE(discard());
    EXPECT_EQ(names("Log/17"), "folder kept.CHL run"); // Qt does not list the broken link
    EXPECT_EQ(names("Discarded/17-2026-11-22"), "Log00001.dat Log00002.dat stray");
    EXPECT_EQ(QFile::permissions(wastebasket) & 0x77, QFile::Permissions());
    lay("Log/17/Log00001.dat");
    EXPECT_FALSE(discard());
    EXPECT_EQ(names("Discarded"), "17-2026-11-22 17-2026-11-22_2");
}

TEST_F(LogWastebasketTest, whateverFailsTheFilesAreAllInOnePlace) {
    for (int failing = 1, struck = true; struck != 0; ++failing) {
        SCOPED_TRACE(failing);
        QDir(app.filePath("Log")).removeRecursively();
        QDir(wastebasket).removeRecursively();
        for (const char *name : {"Log/17/Log00001.dat", "Log/17/Log00002.dat", "Log/17/Log00003.dat"})
            lay(name);
        FaultyDisk disk(failing, EIO);
        const bool moved = !discard(disk);
        EXPECT_EQ(names("Log/17"), moved ? "" : "Log00001.dat Log00002.dat Log00003.dat");
        EXPECT_EQ(discardedLogs(wastebasket).size(), moved ? 1U : 0U);
        struck = disk.struck();
    }
}

TEST_F(LogWastebasketTest, whatIsTooOldOrTooMuchGoesTheOldestFirst) {
    for (const char *name :
         {"1-2026-10-22", "2-2026-10-23", "3-2026-11-21", "4-2026-11-22", "4-2026-11-22_2", "mine", "5-2027-01-01"})
        lay(QString("Discarded/") + name + "/Log00001.dat", QByteArray(100'000, 'x'));
    lay("Discarded/1-2026-10-22/folder/file");
    lay("Discarded/3-2026-11-21/run.CHD"); // an operator's
    lay("Discarded/4-2026-11-22/run", FileHead::of(fourLetters("DATA"), 1).bytes() + QByteArray(300'000, 'x'));
    ASSERT_TRUE(QFile::link(app.filePath("Discarded/mine"), app.filePath("Discarded/0-2020-01-01")));
    keepWastebasketLimits(wastebasket, today);
    EXPECT_EQ(names("Discarded"),
              "0-2020-01-01 1-2026-10-22 2-2026-10-23 3-2026-11-21 4-2026-11-22 4-2026-11-22_2 5-2027-01-01 mine");
    EXPECT_EQ(names("Discarded/1-2026-10-22"), "folder");
    keepWastebasketLimits(wastebasket, today, 350'000);
    EXPECT_EQ(names("Discarded"),
              "0-2020-01-01 1-2026-10-22 3-2026-11-21 4-2026-11-22 4-2026-11-22_2 5-2027-01-01 mine");
    EXPECT_EQ(names("Discarded/3-2026-11-21"), "run.CHD");
    EXPECT_EQ(names("Discarded/4-2026-11-22"), "Log00001.dat run");
    EXPECT_EQ(names("Discarded/mine"), "Log00001.dat");
}

} // namespace
