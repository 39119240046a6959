// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/Crc32.h"
#include "chart/files/RecordFile.h"
#include "fuzz/Scenario.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstring>

/// Puts right every checksum of a file of the chart, as far as its lengths make sense, and cuts these to what the file
/// holds: chance would never find the way to what the checksums protect.
inline void mendChecksums(std::span<std::uint8_t> file) {
    constexpr std::size_t identityAt = 16;
    constexpr std::size_t sumAt = FileHead::size - sizeof(quint32);
    if (file.size() < FileHead::size)
        return;
    const quint32 sum = crc32Of(0, file.data(), sumAt);
    std::memcpy(&file[sumAt], &sum, sizeof sum);
    quint64 identity = 0;
    std::memcpy(&identity, &file[identityAt], sizeof identity);
    std::size_t position = FileHead::size;
    for (quint32 number = 0; file.size() - position >= RecordHead::size; ++number) {
        const auto bytes = file.subspan(position);
        RecordHead head{.kind = 0, .number = number};
        std::memcpy(&head.kind, &bytes[0], sizeof head.kind);
        std::memcpy(&head.length, &bytes[2 * sizeof(quint32)], sizeof head.length);
        head.length = std::min<quint64>(head.length & 0xffff, bytes.size() - RecordHead::size);
        head.payloadSum = crc32Of(0, bytes.data() + RecordHead::size, head.length);
        head.put(reinterpret_cast<char(&)[RecordHead::size]>(bytes[0]), identity);
        position += RecordHead::size + head.length;
        for (; position % 8 != 0 && position < file.size(); ++position)
            file[position] = 0;
    }
}

/// A folder in memory for the files of the scenarios.
inline const QTemporaryDir &scenarioFolder() {
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/ostrel-scenario-XXXXXX"));
    return folder;
}

inline void layFile(const QString &name, std::span<const std::uint8_t> content) {
    QFile file(scenarioFolder().filePath(name));
    const auto size = static_cast<qint64>(content.size());
    require(file.open(QIODevice::WriteOnly) &&
            file.write(reinterpret_cast<const char *>(content.data()), size) == size);
}
