// SPDX-License-Identifier: MIT
#include "chart/files/Crc32.h"

#include <zlib.h>

#ifdef __x86_64__
#include <immintrin.h>

#define WITH_PRODUCTS __attribute__((target("pclmul,sse4.1")))
#define WITH_WIDE_PRODUCTS __attribute__((target("vpclmulqdq,pclmul,avx2")))

// The checksum is the remainder of a division of polynomials. Carry-less products with powers of x move a block of
// sixteen bytes onto a later one without changing that remainder; this is repeated until one block is left, which is
// reduced to 32 bits. Several blocks are moved side by side, so that no product waits for the one before.

namespace {

using Block = __m128i;
using Pair = __m256i; // of blocks

// Reduced powers of x that move a block ahead: for its low half and its high half.
struct Distance {
    long long low;
    long long high;
};
constexpr Distance by1024{0x01e88ef372, 0x014a7fe880}; // bits
constexpr Distance by512{0x0154442bd4, 0x01c6e41596};
constexpr Distance by128{0x01751997d0, 0x00ccaa009e};
constexpr Distance by64{0x0163cd6124, 0};

WITH_PRODUCTS inline Block at(const unsigned char *data) {
    return _mm_loadu_si128(reinterpret_cast<const Block *>(data));
}

WITH_PRODUCTS inline Block powers(Distance distance) { return _mm_set_epi64x(distance.high, distance.low); }

/// Moves the remainder in `block` ahead and adds it to `next`.
WITH_PRODUCTS inline Block ahead(Block block, Block powers, Block next) {
    const Block low = _mm_clmulepi64_si128(block, powers, 0x00);
    const Block high = _mm_clmulepi64_si128(block, powers, 0x11);
    return _mm_xor_si128(_mm_xor_si128(low, high), next);
}

/// The checksum of four blocks and of the `size` bytes behind them.
WITH_PRODUCTS quint32 reduced(const Block (&lanes)[4], const unsigned char *data, std::size_t size) {
    Block sum = lanes[0];
    for (int i = 1; i < 4; ++i)
        sum = ahead(sum, powers(by128), lanes[i]);
    for (; size >= 16; data += 16, size -= 16)
        sum = ahead(sum, powers(by128), at(data));

    const Block reduction = _mm_set_epi64x(0x01f7011641, 0x01db710641);
    const Block low32 = _mm_setr_epi32(-1, 0, -1, 0);
    sum = _mm_xor_si128(_mm_srli_si128(sum, 8), _mm_clmulepi64_si128(sum, powers(by128), 0x10));
    sum = _mm_xor_si128(_mm_srli_si128(sum, 4), _mm_clmulepi64_si128(_mm_and_si128(sum, low32), powers(by64), 0x00));
    Block quotient = _mm_clmulepi64_si128(_mm_and_si128(sum, low32), reduction, 0x10);
    quotient = _mm_clmulepi64_si128(_mm_and_si128(quotient, low32), reduction, 0x00);
    return ~static_cast<quint32>(_mm_extract_epi32(_mm_xor_si128(sum, quotient), 1));
}

WITH_PRODUCTS inline Block begun(quint32 crc, const unsigned char *data) {
    return _mm_xor_si128(at(data), _mm_cvtsi32_si128(static_cast<int>(~crc)));
}

WITH_PRODUCTS quint32 fourBlocks(quint32 crc, const unsigned char *data, std::size_t size) {
    Block lanes[4] = {begun(crc, data), at(data + 16), at(data + 32), at(data + 48)};
    for (data += 64, size -= 64; size >= 64; data += 64, size -= 64) {
        for (int i = 0; i < 4; ++i)
            lanes[i] = ahead(lanes[i], powers(by512), at(data + 16 * i));
    }
    return reduced(lanes, data, size);
}

WITH_WIDE_PRODUCTS inline Pair pairAt(const unsigned char *data) {
    return _mm256_loadu_si256(reinterpret_cast<const Pair *>(data));
}

WITH_WIDE_PRODUCTS inline Pair ahead(Pair pair, Distance distance, Pair next) {
    const Pair powers = _mm256_broadcastsi128_si256(_mm_set_epi64x(distance.high, distance.low));
    const Pair low = _mm256_clmulepi64_epi128(pair, powers, 0x00);
    const Pair high = _mm256_clmulepi64_epi128(pair, powers, 0x11);
    return _mm256_xor_si256(_mm256_xor_si256(low, high), next);
}

WITH_WIDE_PRODUCTS quint32 eightBlocks(quint32 crc, const unsigned char *data, std::size_t size) {
    Pair lanes[4] = {pairAt(data), pairAt(data + 32), pairAt(data + 64), pairAt(data + 96)};
    lanes[0] = _mm256_xor_si256(lanes[0], _mm256_zextsi128_si256(_mm_cvtsi32_si128(static_cast<int>(~crc))));
    for (data += 128, size -= 128; size >= 128; data += 128, size -= 128) {
        for (int i = 0; i < 4; ++i)
            lanes[i] = ahead(lanes[i], by1024, pairAt(data + 32 * i));
    }
    const Pair front = ahead(lanes[0], by512, lanes[2]);
    const Pair back = ahead(lanes[1], by512, lanes[3]);
    const Block blocks[4] = {_mm256_castsi256_si128(front), _mm256_extracti128_si256(front, 1),
                             _mm256_castsi256_si128(back), _mm256_extracti128_si256(back, 1)};
    _mm256_zeroupper(); // otherwise all later code is several times slower on some processors
    return reduced(blocks, data, size);
}

const bool products = __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");
const bool wideProducts = products && __builtin_cpu_supports("vpclmulqdq") && __builtin_cpu_supports("avx2");

} // namespace
#endif

namespace ostrel {

quint32 crc32Of(quint32 crc, const void *data, std::size_t size) {
    const auto *bytes = static_cast<const unsigned char *>(data);
#ifdef __x86_64__
    const std::size_t whole = size & ~std::size_t{15};
    if (products && whole >= 64) {
        crc = wideProducts && whole >= 128 ? eightBlocks(crc, bytes, whole) : fourBlocks(crc, bytes, whole);
        bytes += whole;
        size -= whole;
    }
#endif
    return static_cast<quint32>(::crc32_z(crc, bytes, size));
}

} // namespace ostrel
