// SPDX-License-Identifier: MIT
#include "files/PlainFile.h"

#include "fakes/FaultyDisk.h"
#include "fakes/TestFolder.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace {

class PlainFileTest : public testing::Test {
protected:
    std::string refusal(const QString &name) const {
        QByteArray content("as it was");
        const std::error_code error = readPlainFile(folder.at(name), content);
        EXPECT_EQ(content, "as it was");
        EXPECT_EQ(openPlainFile(folder.at(name), O_WRONLY | O_APPEND | O_CREAT).error, error);
        return error.message();
    }

    TestFolder folder;
};

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
    folder.lay("list", all);
    for (int failing = 1; failing < 10; ++failing) {
        const bool fails = failing < 8; // not the closing, which comes after five pieces and the end
        QByteArray content("as it was");
        FaultyDisk disk(failing, EIO, 1000);
        EXPECT_EQ(readPlainFile(folder.at("list"), content, disk).value(), fails ? EIO : 0) << failing;
        EXPECT_EQ(content, fails ? "as it was" : all) << failing;
    }
    ASSERT_TRUE(QFile::resize(folder.at("list"), qint64{1} << 36));
    QByteArray content;
    EXPECT_EQ(readPlainFile(folder.at("list"), content), std::errc::file_too_large);
}

} // namespace
