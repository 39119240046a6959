// SPDX-License-Identifier: MIT
#include "files/DurableFile.h"

#include "fakes/TestFolder.h"
#include "files/WhateverFails.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

class DurableFileTest : public testing::Test {
protected:
    QByteArray content() const { return folder.content("run.chd"); }

    TestFolder folder;
    QString path = folder.at("run.chd");
};

TEST_F(DurableFileTest, whereverTheDiskFailsTheOldFileOrTheNewOneStandsAlone) {
    const auto replacing = [this](FaultyDisk &disk) {
        folder.lay("run.chd", "old");
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
    folder.lay("run.chd", "old");
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
    ASSERT_EQ(::mkfifo(folder.native("run.chd").constData(), 0600), 0);
    EXPECT_EQ(replaceFile(path, "x").message(), "is a named pipe");
    folder.lay("kept");
    ASSERT_EQ(::chmod(folder.native("kept").constData(), 0444), 0);
    EXPECT_EQ(replaceFile(folder.at("kept"), "x").value(), ::geteuid() == 0 ? 0 : EACCES); // root may
}

} // namespace
