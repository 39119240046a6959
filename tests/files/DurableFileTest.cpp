// SPDX-License-Identifier: MIT
#include "files/DurableFile.h"

#include "fakes/FaultyDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class DurableFileTest : public testing::Test {
protected:
    void lay(const QByteArray &content) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray content() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }
    QStringList entries() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System); }

    QTemporaryDir folder;
    QString path = folder.filePath("run.chd");
};

TEST_F(DurableFileTest, whereverTheDiskFailsTheOldFileOrTheNewOneStandsAlone) {
    for (int failing = 1;; ++failing) {
        lay("old");
        FaultyDisk disk(failing);
        const std::error_code error = replaceFile(path, "the new run", disk);
        if (!disk.struck()) {
            EXPECT_FALSE(error);
            EXPECT_EQ(content(), "the new run");
            EXPECT_GT(failing, 7);
            break;
        }
        SCOPED_TRACE(failing);
        // Only the closing of the folder may fail unheard: all is on the disk by then.
        EXPECT_TRUE(error.value() == ENOSPC || content() == "the new run");
        EXPECT_TRUE(content() == "old" || content() == "the new run");
        EXPECT_EQ(entries(), QStringList{"run.chd"});
    }
}

TEST_F(DurableFileTest, aFileGivenUpLeavesNothing) {
    {
        DurableFile file(path);
        EXPECT_TRUE(file.write("half a run"));
    }
    EXPECT_EQ(entries(), QStringList());
}

TEST_F(DurableFileTest, permissionsAndLinksStay) {
    lay("old");
    ASSERT_EQ(::chmod(path.toLocal8Bit().constData(), 0640), 0);
    const QString link = folder.filePath("link.chd");
    ASSERT_TRUE(QFile::link("run.chd", link));
    EXPECT_FALSE(replaceFile(link, "new"));
    struct stat now {};
    ASSERT_EQ(::stat(path.toLocal8Bit().constData(), &now), 0);
    EXPECT_EQ(now.st_mode & 07777, 0640U);
    EXPECT_EQ(content(), "new");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(replaceFile(link, "newer", FileOperations::system(), Links::Refuse).message(), "is a symbolic link");
    EXPECT_EQ(content(), "new");
}

TEST_F(DurableFileTest, onlyPlainFilesInWritablePlacesAreReplaced) {
    EXPECT_EQ(replaceFile(folder.path(), "x").value(), EISDIR);
    EXPECT_EQ(replaceFile(folder.filePath("none/run.chd"), "x").value(), ENOENT);
    ASSERT_EQ(::mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(replaceFile(path, "x").message(), "is a named pipe");
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may write every file";
    ASSERT_EQ(::unlink(path.toLocal8Bit().constData()), 0);
    lay("kept");
    ASSERT_EQ(::chmod(path.toLocal8Bit().constData(), 0444), 0);
    EXPECT_EQ(replaceFile(path, "x").value(), EACCES);
}

} // namespace
