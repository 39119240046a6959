// SPDX-License-Identifier: MIT
#include "simulator/InstrumentStream.h"

#include "acquisition/StreamFormat.h"

#include <QtEndian>

#include <bit>

namespace ostrel {

using namespace StreamFormat;

namespace {

QByteArray blockHead(char letter) { return QByteArray{1, char(SyncByte)} + letter; }

} // namespace

QByteArray sampleBlock(char letter, float value) {
    QByteArray body(sizeof value, Qt::Uninitialized);
    qToBigEndian(std::bit_cast<quint32>(value), body.data());
    return blockHead(letter) + body;
}

QByteArray parameterBlock(char letter, quint8 parameter) { return blockHead(letter) + char(parameter); }

QByteArray statusBlock() { return blockHead(FBlock) + QByteArray{4, '\0'}; }

QByteArray methodBlock(const QByteArray &text) { return blockHead(MethodBlock) + text + char(SyncByte); }

QByteArray brokenBlock(char letter) {
    if (letter == MethodBlock)
        return blockHead(letter) + "A method that breaks";
    const bool hasParameter = QByteArrayView{"EHPR"}.contains(letter);
    return hasParameter ? blockHead(letter) : sampleBlock(letter, 1.0F).first(4);
}

bool isBlockLetter(char letter) { return QByteArrayView{"CDEFHMPRUV"}.contains(letter); }

} // namespace ostrel
