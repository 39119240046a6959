// SPDX-License-Identifier: MIT
#include "acquisition/ReceiveRing.h"

#include "base/Numbers.h"

#include <algorithm>

namespace ostrel {

void ReceiveRing::put(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const auto piece = bytes.first(std::min(bytes.size(), std::size_t(size - PutIndex_)));
        std::copy(piece.begin(), piece.end(), ReceiveBuffer_.begin() + PutIndex_);
        PutIndex_ = wrapped(PutIndex_ + int(piece.size()));
        ByteCount_ += int(piece.size());
        received_ += piece.size();
        bytes = bytes.subspan(piece.size());
    }
}

void ReceiveRing::empty() {
    TakeIndex_ = PutIndex_;
    ByteCount_ = 0;
    rebase();
}

bool ReceiveRing::consistent() const {
    return ByteCount_ > -size && ByteCount_ <= size && wrapped(wrapped(TakeIndex_ + ByteCount_ + size)) == PutIndex_;
}

void ReceiveRing::AddDebugBytes(Which which, QString &DebugText) const {
    constexpr int behind = 33;
    constexpr int shown = 32;
    DebugText += QStringLiteral("\r\n");
    const int position = which == AroundTake ? TakeIndex_ : LookIndex_;
    const int start = wrapped(position - behind + size);
    for (int i = 0; i < shown; ++i)
        DebugText += leadingBlankNumber(ReceiveBuffer_[wrapped(start + i)]);
}

} // namespace ostrel
