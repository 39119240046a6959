// SPDX-License-Identifier: MIT
#pragma once

#include "base/Int16.h"

#include <QString>
#include <QtEndian>

#include <array>
#include <cstdint>
#include <cstring>
#include <span>

namespace ostrel {

/// The bytes between the serial port and the decoder, with two read positions: the take position consumes, the look
/// position only peeks. Neither the writing nor the reading side tests how full the ring is: bytes beyond 10000
/// overwrite the oldest, and a read from an empty ring returns a stale byte and makes its count negative. Only a count
/// that leaves 16 bits raises overflow (6).
class ReceiveRing {
public:
    static constexpr int size = 10000;
    /// Where AddDebugBytes takes its bytes from.
    enum Which : int { AroundTake = -1, AroundLook = 0 };

    void put(std::span<const std::uint8_t> bytes);
    /// Discards all bytes.
    void empty();
    /// The counts fit the positions, and nothing was overwritten. A negative count is allowed.
    bool consistent() const;
    /// The number of all bytes put so far.
    std::uint64_t received() const { return received_; }
    std::uint8_t TakeByte() {
        const std::uint8_t byte = ReceiveBuffer_[TakeIndex_];
        discard(1);
        return byte;
    }
    /// Four bytes as a number, the first one its highest byte.
    std::uint32_t TakeWord() {
        std::array<std::uint8_t, 4> bytes;
        if (TakeIndex_ + 4 <= size) {
            std::memcpy(bytes.data(), &ReceiveBuffer_[TakeIndex_], 4);
            discard(4);
        } else {
            for (std::uint8_t &byte : bytes)
                byte = TakeByte();
        }
        return qFromBigEndian<std::uint32_t>(bytes.data());
    }
    /// Skips as many bytes as that number of TakeByte calls would take.
    void discard(int count) {
        TakeIndex_ = wrapped(TakeIndex_ + count);
        ByteCount_ -= count;
    }
    /// Peeks one byte. Valid only between a rebase and the next TakeByte.
    std::uint8_t GetLastBytes() {
        const std::uint8_t byte = ReceiveBuffer_[LookIndex_];
        LookIndex_ = wrapped(LookIndex_ + 1);
        --LookByteCount_;
        return byte;
    }
    /// Sets the look position to the take position.
    void rebase() {
        LookIndex_ = TakeIndex_;
        LookByteCount_ = ByteCount_;
    }

    /// Appends to `DebugText` a line end and the 32 bytes that are 33 to 2 places before the position, valid or stale.
    void AddDebugBytes(Which which, QString &DebugText) const;

    int PutIndex() const { return PutIndex_; }
    int TakeIndex() const { return TakeIndex_; }
    int LookIndex() const { return LookIndex_; }
    /// Bytes written and not yet consumed.
    int ByteCount() const { return ByteCount_; }
    /// Bytes that may still be peeked.
    int LookByteCount() const { return LookByteCount_; }

private:
    static int wrapped(int index) { return index < size ? index : index - size; }

    std::array<std::uint8_t, size> ReceiveBuffer_{};
    int PutIndex_ = 0;
    int TakeIndex_ = 0;
    int LookIndex_ = 0;
    std::uint64_t received_ = 0;
    Int16 ByteCount_;
    Int16 LookByteCount_;
};

} // namespace ostrel
