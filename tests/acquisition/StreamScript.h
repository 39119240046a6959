// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/StreamFormat.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QStringList>

#include <bit>

using namespace ostrel;

/// The bytes of a sample block.
inline QByteArray sampleBlock(char letter, float value) {
    QByteArray block;
    QDataStream(&block, QIODevice::WriteOnly)
        << StreamFormat::SyncByte << std::uint8_t(letter) << std::bit_cast<std::uint32_t>(value);
    return block;
}

/// The stream that a line tells: "u" and "v" are a point, a UV block of that letter and its conductivity block, and "."
/// is one where the letter does not matter. "E4" is a block with its byte, "Mtext" a method.
inline QByteArray stream(const QString &script) {
    QByteArray bytes;
    for (const QByteArray &word : script.toLatin1().split(' ')) {
        if (word == "." || word == "u" || word == "v") {
            bytes += sampleBlock(word == "v" ? 'V' : 'U', 0.25F) + sampleBlock('C', 12.5F);
            continue;
        }
        bytes += char(StreamFormat::SyncByte);
        if (word.startsWith('M'))
            bytes += word + char(StreamFormat::SyncByte);
        else
            bytes += word.first(1) + char(word.mid(1).toInt());
    }
    return bytes;
}
