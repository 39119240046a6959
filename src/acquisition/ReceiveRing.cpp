// SPDX-License-Identifier: MIT
#include "acquisition/ReceiveRing.h"

#include "base/Numbers.h"

void ReceiveRing::AddDebugBytes(Which which, QString &DebugText) const {
    constexpr int behind = 33;
    constexpr int shown = 32;
    DebugText += QStringLiteral("\r\n");
    const int position = which == AroundTake ? TakeIndex_ : LookIndex_;
    const int start = (position - behind + size) % size;
    for (int i = 0; i < shown; ++i)
        DebugText += leadingBlankNumber(ReceiveBuffer_[(start + i) % size]);
}
