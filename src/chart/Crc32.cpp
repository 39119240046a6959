// SPDX-License-Identifier: MIT
#include "chart/Crc32.h"

#include <zlib.h>

#ifdef __x86_64__
#include <immintrin.h>

#define WITH_CARRYLESS_PRODUCTS __attribute__((target("pclmul,sse4.1")))

namespace {

using Block = __m128i;

constexpr std::size_t fold = 64; // bytes at a time: four blocks, so that no product waits for the one before

WITH_CARRYLESS_PRODUCTS inline Block at(const unsigned char *data) {
    return _mm_loadu_si128(reinterpret_cast<const Block *>(data));
}

/// Moves what `block` stands for ahead by the distance of `powers`, onto `next`.
WITH_CARRYLESS_PRODUCTS inline Block ahead(Block block, Block powers, Block next) {
    const Block low = _mm_clmulepi64_si128(block, powers, 0x00);
    const Block high = _mm_clmulepi64_si128(block, powers, 0x11);
    return _mm_xor_si128(_mm_xor_si128(low, high), next);
}

/// `size` is a multiple of 16, and at least 64. The powers of x are those of V. Gopal et al., "Fast CRC Computation for
/// Generic Polynomials Using PCLMULQDQ Instruction", for the reflected polynomial.
WITH_CARRYLESS_PRODUCTS quint32 folded(quint32 crc, const unsigned char *data, std::size_t size) {
    const Block by512 = _mm_set_epi64x(0x01c6e41596, 0x0154442bd4);
    const Block by128 = _mm_set_epi64x(0x00ccaa009e, 0x01751997d0);
    const Block by64 = _mm_set_epi64x(0, 0x0163cd6124);
    const Block reduction = _mm_set_epi64x(0x01f7011641, 0x01db710641);
    const Block low32 = _mm_setr_epi32(-1, 0, -1, 0);

    Block lanes[4] = {_mm_xor_si128(at(data), _mm_cvtsi32_si128(static_cast<int>(~crc))), at(data + 16), at(data + 32),
                      at(data + 48)};
    for (data += fold, size -= fold; size >= fold; data += fold, size -= fold) {
        for (int i = 0; i < 4; ++i)
            lanes[i] = ahead(lanes[i], by512, at(data + 16 * i));
    }
    Block sum = lanes[0];
    for (int i = 1; i < 4; ++i)
        sum = ahead(sum, by128, lanes[i]);
    for (; size >= 16; data += 16, size -= 16)
        sum = ahead(sum, by128, at(data));

    sum = _mm_xor_si128(_mm_srli_si128(sum, 8), _mm_clmulepi64_si128(sum, by128, 0x10));
    sum = _mm_xor_si128(_mm_srli_si128(sum, 4), _mm_clmulepi64_si128(_mm_and_si128(sum, low32), by64, 0x00));
    Block quotient = _mm_clmulepi64_si128(_mm_and_si128(sum, low32), reduction, 0x10);
    quotient = _mm_clmulepi64_si128(_mm_and_si128(quotient, low32), reduction, 0x00);
    return ~static_cast<quint32>(_mm_extract_epi32(_mm_xor_si128(sum, quotient), 1));
}

const bool carrylessProducts = __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");

} // namespace
#endif

quint32 crc32Of(quint32 crc, const void *data, std::size_t size) {
    const auto *bytes = static_cast<const unsigned char *>(data);
#ifdef __x86_64__
    if (carrylessProducts && size >= fold) {
        const std::size_t whole = size & ~std::size_t{15};
        crc = folded(crc, bytes, whole);
        bytes += whole;
        size -= whole;
    }
#endif
    return static_cast<quint32>(::crc32_z(crc, bytes, size));
}
