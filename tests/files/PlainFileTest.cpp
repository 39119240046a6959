// SPDX-License-Identifier: MIT
#include "files/PlainFile.h"

#include "fakes/FaultyDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>

namespace {

/// Something else comes into the file's place at the last moment before it is opened.
class TrickyDisk : public FileOperations {
public:
    int open(const char *path, int flags, mode_t mode) override {
        ::unlink(path);
        change(path);
        return FileOperations::open(path, flags, mode);
    }
    std::function<void(const char *)> change;
};

class PlainFileTest : public testing::Test {
protected:
    void lay(const QByteArray &content) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    static std::string refusal(const QString &at) {
        QByteArray content("as it was");
        const std::error_code error = readPlainFile(at, content);
        EXPECT_EQ(content, "as it was");
        EXPECT_EQ(openPlainFile(at, O_WRONLY | O_APPEND | O_CREAT).error, error);
        EXPECT_EQ(openPlainFile(at, O_RDWR | O_CREAT).error, error);
        return error.message();
    }

    QTemporaryDir folder;
    QString path = folder.filePath("list");
};

TEST_F(PlainFileTest, whateverElseStandsThereIsNamedAndNeitherWaitedForNorFollowed) {
    lay("kept");
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.filePath("pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(path, folder.filePath("link")));
    ASSERT_TRUE(QFile::link(folder.filePath("nowhere"), folder.filePath("dangling")));
    EXPECT_EQ(refusal(folder.filePath("pipe")), "is a named pipe");
    EXPECT_EQ(refusal(folder.path()), "is a folder");
    EXPECT_EQ(refusal(folder.filePath("link")), "is a symbolic link");
    EXPECT_EQ(refusal(folder.filePath("dangling")), "is a symbolic link");
    EXPECT_EQ(refusal("/dev/zero"), "is a device");
    EXPECT_FALSE(QFile::exists(folder.filePath("nowhere")));
    QByteArray content;
    EXPECT_TRUE(!readPlainFile(path, content) && content == "kept");
    EXPECT_EQ(readPlainFile(folder.filePath("none"), content), std::errc::no_such_file_or_directory);
}

TEST_F(PlainFileTest, whatComesThereAtTheLastMomentIsNotTakenEither) {
    TrickyDisk disk;
    disk.change = [](const char *at) { ::mkfifo(at, 0600); };
    lay("");
    EXPECT_EQ(openPlainFile(path, O_RDONLY, 0, disk).error.message(), "is a named pipe");
    QFile::remove(path);
    disk.change = [](const char *at) { ASSERT_EQ(::symlink("/etc/passwd", at), 0); };
    lay("");
    EXPECT_EQ(openPlainFile(path, O_RDONLY, 0, disk).error.value(), ELOOP);
}

TEST_F(PlainFileTest, aFailingReadIsToldAndShortOnesAddUp) {
    const QByteArray all = QByteArray(2000, 'a') + QByteArray(3000, 'b');
    lay(all);
    for (int failing = 1; failing < 10; ++failing) {
        const bool fails = failing < 8; // not the closing, which comes after five pieces and the end
        QByteArray content("as it was");
        FaultyDisk disk(failing, EIO, 1000);
        EXPECT_EQ(readPlainFile(path, content, disk).value(), fails ? EIO : 0) << failing;
        EXPECT_EQ(content, fails ? "as it was" : all) << failing;

        QStringList names; // the folder's entries are this one, ".", ".." and the end
        FaultyDisk other(failing, EIO);
        EXPECT_EQ(listFolder(other, folder.path(), names).value(), failing < 6 ? EIO : 0) << failing;
        EXPECT_TRUE(failing < 6 || names == QStringList{"list"}) << failing;
    }
}

TEST_F(PlainFileTest, noMoreIsReadThanThereIsRoomFor) {
    QByteArray content("as it was");
    lay("x");
    ASSERT_TRUE(QFile::resize(path, qint64{1} << 36));
    EXPECT_EQ(readPlainFile(path, content).value(), EFBIG);
    EXPECT_EQ(content, "as it was");
}

TEST_F(PlainFileTest, aPrivateFolderIsTheUsersWhateverTheUmask) {
    for (const mode_t mask : {0, 022, 0177, 0777}) {
        const QByteArray name = QFile::encodeName(folder.filePath(QString::number(mask, 8)));
        const mode_t usual = ::umask(mask);
        const int made = makePrivateFolder(FileOperations::system(), name.constData());
        ::umask(usual);
        struct stat now {};
        ASSERT_TRUE(made == 0 && ::stat(name.constData(), &now) == 0);
        EXPECT_EQ(now.st_mode & 0777, 0700U) << mask;
    }
}

} // namespace
