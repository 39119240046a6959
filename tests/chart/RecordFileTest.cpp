// SPDX-License-Identifier: MIT
#include "chart/files/RecordFile.h"

#include "chart/RunFiles.h"
#include "chart/files/Crc32.h"

#include <QTemporaryDir>
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

TEST(RecordReader, findsRecordsBehindADamageButNotThoseOfAnotherFile) {
    using Found = RecordReader::Found;
    const FileHead head = FileHead::of(fourLetters("LOG "), 3);
    const FileHead older = FileHead::of(fourLetters("LOG "), 3); // of which something is left over on the disk
    QByteArray bytes = head.bytes();
    for (const auto &[number, text] : {std::pair(0U, "one"), {1U, "two"}, {2U, "three"}, {3U, "four"}}) {
        RecordPieces record(fourLetters("TEXT"));
        record.add(text);
        for (const auto piece : record.seal(number == 3 ? older.identity : head.identity, number))
            bytes.append(piece.data(), static_cast<qsizetype>(piece.size()));
    }
    const QTemporaryDir folder;
    lay(folder.filePath("log"), flipped(bytes, bytes.lastIndexOf("TEXT", bytes.indexOf("two"))));
    RecordReader reader(folder.filePath("log"));
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
