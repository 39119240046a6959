// SPDX-License-Identifier: MIT
#include "fakes/TestFolder.h"
#include "files/AppendFile.h"
#include "files/DurableFile.h"
#include "files/PlainFile.h"
#include "files/WhateverFails.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A folder with a file, of which each kind has its cases.
struct OneFile : testing::Test {
    static std::error_code append(AppendFile &file, const QByteArray &data) {
        file.add(data.constData(), static_cast<std::size_t>(data.size()));
        return file.flush();
    }
    QByteArray content() const { return folder.content(path); }
    /// The errors of reading and of appending.
    std::string refusal(const QString &name) const {
        QByteArray content("as it was");
        const std::error_code error = readPlainFile(folder.at(name), content);
        EXPECT_EQ(content, "as it was");
        EXPECT_EQ(openPlainFile(folder.at(name), O_WRONLY | O_APPEND | O_CREAT).error, error);
        return error.message();
    }

    TestFolder folder;
    QString path = folder.at("run.chd");
};
using AppendFileTest = OneFile;
using DurableFileTest = OneFile;
using PlainFileTest = OneFile;

TEST_F(AppendFileTest, piecesStandOneBehindTheOtherAndZerosBehindThem) {
    AppendFile file;
    ASSERT_FALSE(file.create(path));
    QByteArray all;
    for (const int size : {1, 4000, 61534, 1, 200000}) { // the third ends one byte before the laid-out space does
        all += QByteArray(size, static_cast<char>('a' + size % 7));
        EXPECT_FALSE(append(file, all.last(size)));
        EXPECT_EQ(content().size() % qsizetype{AppendFile::layout}, 0);
        EXPECT_EQ(content(), all + QByteArray(content().size() - all.size(), '\0'));
    }
    EXPECT_EQ(content().size(), 5 * qsizetype{AppendFile::layout});
    EXPECT_EQ(AppendFile().create(path).value(), EEXIST);
}

TEST_F(AppendFileTest, whateverFailsIsToldAndOnlyWhatWasFlushedStands) {
    for (int failing = 1; failing <= 8; ++failing) { // four operations make the file, two flush a piece
        FaultyDisk disk(failing, EIO);
        AppendFile file(disk);
        const bool hasFirst = !file.create(path) && !append(file, "first");
        EXPECT_EQ(hasFirst, failing == 4 || failing > 6) << failing; // the fourth closes the folder
        EXPECT_EQ(hasFirst && !append(file, "second"), failing == 4) << failing;
        EXPECT_EQ(file.isOpen(), failing == 4) << failing;
        EXPECT_EQ(!append(file, "third"), failing == 4) << failing; // a closed file takes nothing
        EXPECT_EQ(QFile::exists(path), hasFirst) << failing;
        QFile::remove(path);
    }
}

TEST_F(AppendFileTest, aNearlyFullDiskTakesThePieceIfNotTheZeros) {
    FaultyDisk disk(8, ENOSPC, 100); // takes three times as much, and fails then
    AppendFile file(disk);
    ASSERT_FALSE(file.create(path));
    EXPECT_FALSE(append(file, QByteArray(240, 'a')));
    EXPECT_EQ(content().size(), 350);
    EXPECT_TRUE(content().startsWith(QByteArray(240, 'a')));
    EXPECT_TRUE(file.isInPlace());
}

TEST_F(AppendFileTest, aFileGoneFromItsPlaceIsNoticed) {
    AppendFile file;
    ASSERT_FALSE(file.create(path));
    ASSERT_FALSE(append(file, "piece"));
    EXPECT_TRUE(file.isInPlace());
    ASSERT_TRUE(QFile::resize(path, 5));
    EXPECT_FALSE(file.isInPlace());
    ASSERT_TRUE(QFile::remove(path));
    folder.lay(path, QByteArray(AppendFile::layout, 'x'));
    EXPECT_FALSE(file.isInPlace());
}

TEST_F(DurableFileTest, whereverTheDiskFailsTheOldFileOrTheNewOneStandsAlone) {
    const auto replacing = [this](FaultyDisk &disk) {
        folder.lay(path, "old");
        const std::error_code error = replaceFile(path, "the new run", disk);
        EXPECT_TRUE(!error || (disk.struck() && error.value() == EIO));
        // Only the closing of the folder may fail unheard: all is on the disk by then.
        EXPECT_TRUE(content() == "the new run" || (error && content() == "old"));
        EXPECT_EQ(folder.names(), QStringList{"run.chd"});
    };
    whateverFails(replacing, 4);
}

TEST_F(DurableFileTest, aFileGivenUpLeavesNothing) {
    EXPECT_TRUE(DurableFile(path).write("half a run"));
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(DurableFileTest, permissionsAndLinksStay) {
    folder.lay(path, "old");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::Permissions(0x6040)));
    const QString link = folder.at("link.chd");
    ASSERT_TRUE(QFile::link("run.chd", link));
    EXPECT_FALSE(replaceFile(link, "new"));
    EXPECT_EQ(int(QFile::permissions(path) & 0xF0FF), 0x6040);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(replaceFile(link, "newer", FileOperations::system(), Links::Refuse).message(), "is a symbolic link");
    EXPECT_EQ(content(), "new");
}

TEST_F(DurableFileTest, onlyPlainFilesInWritablePlacesAreReplaced) {
    EXPECT_EQ(replaceFile(folder.path(), "x").value(), EISDIR);
    EXPECT_EQ(replaceFile(folder.at("none/run.chd"), "x").value(), ENOENT);
    ASSERT_EQ(::mkfifo(folder.native(path).constData(), 0600), 0);
    EXPECT_EQ(replaceFile(path, "x").message(), "is a named pipe");
    folder.lay("kept");
    ASSERT_EQ(::chmod(folder.native("kept").constData(), 0444), 0);
    EXPECT_EQ(replaceFile(folder.at("kept"), "x").value(), ::geteuid() == 0 ? 0 : EACCES); // root may
}

TEST_F(PlainFileTest, whateverElseStandsThereIsNamedAndNeitherWaitedForNorFollowed) {
    ASSERT_EQ(::mkfifo(folder.native("pipe").constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(folder.at("nowhere"), folder.at("dangling")));
    EXPECT_EQ(refusal("pipe"), "is a named pipe");
    EXPECT_EQ(refusal("."), "is a folder");
    EXPECT_EQ(refusal("dangling"), "is a symbolic link");
    EXPECT_EQ(refusal("/dev/zero"), "is a device");
    EXPECT_FALSE(QFile::exists(folder.at("nowhere")));
    QByteArray content;
    EXPECT_EQ(readPlainFile(folder.at("none"), content), std::errc::no_such_file_or_directory);
}

TEST_F(PlainFileTest, aFailingReadIsToldAndShortOnesAddUpToWhatThereIsRoomFor) {
    const QByteArray all = QByteArray(2000, 'a') + QByteArray(3000, 'b');
    folder.lay(path, all);
    for (int failing = 1; failing < 10; ++failing) {
        const bool fails = failing < 8; // not the closing, which comes after five pieces and the end
        QByteArray content("as it was");
        FaultyDisk disk(failing, EIO, 1000);
        EXPECT_EQ(readPlainFile(path, content, disk).value(), fails ? EIO : 0) << failing;
        EXPECT_EQ(content, fails ? "as it was" : all) << failing;
    }
    ASSERT_TRUE(QFile::resize(path, qint64{1} << 36));
    QByteArray content;
    EXPECT_EQ(readPlainFile(path, content), std::errc::file_too_large);
}

} // namespace
