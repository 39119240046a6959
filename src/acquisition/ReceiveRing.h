// SPDX-License-Identifier: MIT
#pragma once

#include "base/Int16.h"

#include <QString>

#include <array>
#include <cstdint>

/// The bytes between the serial port and the decoder, with two read positions: the take position consumes, the look
/// position only peeks. Neither the writing nor the reading side tests how full the ring is: bytes beyond 10000
/// overwrite the oldest, and a read of an empty ring answers a stale byte and takes its count below zero. Only a count
/// that leaves 16 bits raises overflow (6).
class ReceiveRing {
public:
    static constexpr int size = 10000;
    /// Where AddDebugBytes takes its bytes from.
    enum Which : int { AroundTake = -1, AroundLook = 0 };

    void put(std::uint8_t byte) {
        ReceiveBuffer_[PutIndex_] = byte;
        PutIndex_ = next(PutIndex_);
        ++ByteCount_;
    }
    std::uint8_t TakeByte() {
        const std::uint8_t byte = ReceiveBuffer_[TakeIndex_];
        TakeIndex_ = next(TakeIndex_);
        --ByteCount_;
        return byte;
    }
    /// Peeks one byte. Means something only between a rebase and the next TakeByte.
    std::uint8_t GetLastBytes() {
        const std::uint8_t byte = ReceiveBuffer_[LookIndex_];
        LookIndex_ = next(LookIndex_);
        --LookByteCount_;
        return byte;
    }
    /// Puts the look position on the take position.
    void rebase() {
        LookIndex_ = TakeIndex_;
        LookByteCount_ = ByteCount_;
    }

    /// Appends to `DebugText` a line end and 32 bytes, those 33 to 2 places behind the position, live or stale.
    void AddDebugBytes(Which which, QString &DebugText) const;

    int PutIndex() const { return PutIndex_; }
    int TakeIndex() const { return TakeIndex_; }
    int LookIndex() const { return LookIndex_; }
    /// Bytes written and not yet consumed.
    int ByteCount() const { return ByteCount_; }
    /// Bytes that may still be peeked.
    int LookByteCount() const { return LookByteCount_; }

private:
    static int next(int index) { return index + 1 == size ? 0 : index + 1; }

    std::array<std::uint8_t, size> ReceiveBuffer_{};
    Int16 PutIndex_;
    Int16 TakeIndex_;
    Int16 LookIndex_;
    Int16 ByteCount_;
    Int16 LookByteCount_;
};
