// SPDX-License-Identifier: MIT
#include "files/AppendFile.h"

#include "fakes/FaultyDisk.h"
#include "fakes/TestFolder.h"

namespace {

class AppendFileTest : public testing::Test {
protected:
    static std::error_code append(AppendFile &file, const QByteArray &data) {
        file.add(data.constData(), static_cast<std::size_t>(data.size()));
        return file.flush();
    }
    QByteArray content() const { return folder.content("log"); }

    TestFolder folder;
    QString path = folder.at("log");
};

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
        EXPECT_EQ(QFile::exists(path), hasFirst) << failing;
        EXPECT_EQ(hasFirst && !append(file, "second"), failing == 4) << failing;
        EXPECT_EQ(file.isOpen(), failing == 4) << failing;
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
    EXPECT_TRUE(file.stands());
}

TEST_F(AppendFileTest, aFileGoneFromItsPlaceIsNoticed) {
    AppendFile file;
    ASSERT_FALSE(file.create(path));
    ASSERT_FALSE(append(file, "piece"));
    EXPECT_TRUE(file.stands());
    ASSERT_TRUE(QFile::resize(path, 5));
    EXPECT_FALSE(file.stands());
    ASSERT_TRUE(QFile::remove(path));
    folder.lay("log", QByteArray(AppendFile::layout, 'x'));
    EXPECT_FALSE(file.stands());
}

} // namespace
