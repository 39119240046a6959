// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/StreamFormat.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <bit>

using namespace ostrel;

/// The bytes of a sample block.
inline QByteArray sampleBlock(char letter, float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    QByteArray block{1, static_cast<char>(StreamFormat::SyncByte)};
    block += letter;
    for (int shift = 24; shift >= 0; shift -= 8)
        block += static_cast<char>(bits >> shift & 0xFF);
    return block;
}

/// The stream that a line tells: "u" and "v" are a point, a UV block of that letter and its conductivity block, and "."
/// is one where the letter does not matter. "E4" is a block with its byte, "F" the block without use, "Mtext" a method.
inline QByteArray stream(const QString &script) {
    QByteArray bytes;
    for (const QString &word : script.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const char letter = word.at(0).toLatin1();
        if (word == QLatin1String(".") || word == QLatin1String("u") || word == QLatin1String("v")) {
            bytes += sampleBlock(letter == 'v' ? 'V' : 'U', 0.25F) + sampleBlock('C', 12.5F);
        } else if (letter == 'F') {
            bytes += sampleBlock('F', 0);
        } else {
            bytes += static_cast<char>(StreamFormat::SyncByte);
            bytes += letter;
            if (letter == 'M')
                bytes += word.mid(1).toLatin1() + static_cast<char>(StreamFormat::SyncByte);
            else
                bytes += static_cast<char>(word.mid(1).toInt());
        }
    }
    return bytes;
}
