// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace ostrel {

/// The instrument's blocks in the format of the line. A letter is one of StreamFormat::BlockType.

/// "C", "D", "U" or "V" with its value.
QByteArray sampleBlock(char letter, float value);

/// "E", "H", "P" or "R" with its parameter.
QByteArray parameterBlock(char letter, quint8 parameter);

/// "F"; its four bytes mean nothing to the recorder.
QByteArray statusBlock();

/// "M" with the text, one byte a character, and its closing sync byte. The text must be free of sync bytes.
QByteArray methodBlock(const QByteArray &text);

/// An incomplete block of this letter; "M" without its closing sync byte.
QByteArray brokenBlock(char letter);

/// Whether the letter is that of a block.
bool isBlockLetter(char letter);

} // namespace ostrel
