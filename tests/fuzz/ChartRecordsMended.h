// SPDX-License-Identifier: MIT
#pragma once

#include "chart/files/Crc32.h"
#include "chart/files/RecordFile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>

/// Puts right every checksum of a file of the chart, as far as its lengths make sense, and cuts these to what the file
/// holds: chance would never find the way to what the checksums protect.
inline void mendChecksums(std::span<std::uint8_t> file) {
    constexpr std::size_t identityAt = 16;
    constexpr std::size_t sumAt = FileHead::size - sizeof(quint32);
    const auto at = [file](std::size_t position, auto &value) { std::memcpy(&value, &file[position], sizeof value); };
    if (file.size() < FileHead::size)
        return;
    const quint32 sum = crc32Of(0, file.data(), sumAt);
    std::memcpy(&file[sumAt], &sum, sizeof sum);
    quint64 identity = 0;
    at(identityAt, identity);
    std::size_t position = FileHead::size;
    for (quint32 number = 0; file.size() - position >= RecordHead::size; ++number) {
        RecordHead head{.kind = 0, .number = number};
        at(position, head.kind);
        at(position + 2 * sizeof(quint32), head.length);
        head.length = std::min<quint64>(head.length & 0xffff, file.size() - position - RecordHead::size);
        head.payloadSum = crc32Of(0, file.data() + position + RecordHead::size, head.length);
        char bytes[RecordHead::size];
        head.put(bytes, identity);
        std::memcpy(&file[position], bytes, sizeof bytes);
        position += sizeof bytes + head.length;
        for (; position % 8 != 0 && position < file.size(); ++position)
            file[position] = 0;
    }
}
