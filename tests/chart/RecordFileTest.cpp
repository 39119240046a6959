// SPDX-License-Identifier: MIT
#include "chart/files/RecordFile.h"

#include "chart/files/Crc32.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

namespace {

TEST(Crc32, isThatOfZlibAtEveryLengthAndPlace) {
    std::mt19937 random(1);
    std::vector<unsigned char> bytes(70000);
    for (unsigned char &byte : bytes)
        byte = static_cast<unsigned char>(random());
    for (std::size_t size = 0; size < 1200; ++size) {
        const unsigned char *from = bytes.data() + size % 17;
        EXPECT_EQ(crc32Of(7, from, size), ::crc32_z(7, from, size)) << size;
    }
    EXPECT_EQ(crc32Of(0, bytes.data(), bytes.size()), ::crc32_z(0, bytes.data(), bytes.size()));
}

using Found = RecordReader::Found;

struct Records : testing::Test {
    void add(const QByteArray &payload) {
        RecordPieces record(fourLetters("TEXT"));
        record.add(payload);
        for (const auto piece : record.seal(head.identity, number))
            file.append(piece.data(), static_cast<qsizetype>(piece.size()));
        ++number;
    }
    QString lay() const {
        QFile on(folder.filePath("log"));
        EXPECT_TRUE(on.open(QIODevice::WriteOnly) && on.write(file) == file.size());
        return on.fileName();
    }

    QTemporaryDir folder;
    FileHead head = FileHead::of(fourLetters("LOG "), 3);
    QByteArray file = head.bytes();
    quint32 number = 0;
};

TEST_F(Records, areFoundAgainBehindADamageButThoseOfAnotherFileAreNot) {
    add("one");
    const auto damaged = file.size();
    add("two");
    add("three");
    file[damaged] = '?';
    head = FileHead::of(fourLetters("LOG "), 3); // left over on the disk from an older file
    add("four");
    RecordReader reader(lay());
    EXPECT_EQ(reader.next(), Found::Record);
    EXPECT_EQ(reader.next(), Found::Damage);
    ASSERT_TRUE(reader.searchNext());
    QByteArray payload;
    EXPECT_TRUE(reader.take(payload) && reader.finish());
    EXPECT_EQ(payload, "three");
    EXPECT_EQ(reader.next(), Found::Damage);
    EXPECT_FALSE(reader.searchNext());
}

} // namespace
