// SPDX-License-Identifier: MIT
#include "files/AppendFile.h"

#include "fakes/FaultyDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

/// Takes 100 bytes in each write, and no more than `room` altogether.
class TightDisk : public FileOperations {
public:
    explicit TightDisk(std::size_t room) : room_(room) {}
    ssize_t writeAt(int fd, const void *data, std::size_t size, off_t position) override {
        const std::size_t taken = std::min({size, room_, std::size_t{100}});
        room_ -= taken;
        errno = ENOSPC;
        return taken == 0 ? -1 : FileOperations::writeAt(fd, data, taken, position);
    }

private:
    std::size_t room_;
};

class AppendFileTest : public testing::Test {
protected:
    static std::error_code append(AppendFile &file, const QByteArray &data) {
        file.add(data.constData(), static_cast<std::size_t>(data.size()));
        return file.flush();
    }
    QByteArray content() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    QTemporaryDir folder;
    QString path = folder.filePath("log");
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
    EXPECT_TRUE(file.stands());
    EXPECT_EQ(AppendFile().create(path).value(), EEXIST);
}

TEST_F(AppendFileTest, whateverFailsIsToldAndWhatWasFlushedStands) {
    for (int failing = 1;; ++failing) {
        FaultyDisk disk(failing, EIO);
        AppendFile file(disk);
        QByteArray flushed;
        file.create(path);
        for (const char *piece : {"first", "second", "third"}) {
            if (file.isOpen() && !append(file, piece))
                flushed += piece;
        }
        SCOPED_TRACE(failing);
        EXPECT_EQ(file.isOpen(), flushed == "firstsecondthird");
        if (flushed.isEmpty())
            EXPECT_FALSE(QFile::exists(path));
        else
            EXPECT_TRUE(content().startsWith(flushed));
        if (!disk.struck())
            break;
        QFile::remove(path);
    }
}

TEST_F(AppendFileTest, aNearlyFullDiskTakesThePieceIfNotTheZeros) {
    TightDisk disk(250);
    AppendFile file(disk);
    ASSERT_FALSE(file.create(path));
    EXPECT_FALSE(append(file, QByteArray(240, 'a')));
    EXPECT_EQ(content().size(), 250);
    EXPECT_TRUE(file.stands());
    EXPECT_EQ(append(file, QByteArray(20, 'b')).value(), ENOSPC);
    EXPECT_TRUE(content().startsWith(QByteArray(240, 'a')));
}

TEST_F(AppendFileTest, aFileGoneFromItsPlaceIsNoticed) {
    AppendFile file;
    ASSERT_FALSE(file.create(path));
    ASSERT_FALSE(append(file, "piece"));
    ASSERT_TRUE(QFile::resize(path, 5));
    EXPECT_FALSE(file.stands());
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_FALSE(AppendFile().create(path));
    EXPECT_FALSE(file.stands());
}

} // namespace
