// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <bit>
#include <cmath>
#include <cstring>

namespace ostrel {

/// Write numbers with a fixed number of decimals, many times faster than the standard library and with the same digits.
/// All return the place behind the last character; `longestNumber` characters must be free.
inline constexpr int longestNumber = 48;

/// "0000" to "9999", one after the other. Four characters may be read from any digit on.
extern const char *const fourDigits;

/// A number below 10^8 without leading zeros. Successive numbers mostly have as many digits, so that the processor
/// predicts these branches well.
inline char *writeWhole(char *at, quint32 whole) {
    if (whole < 10) {
        *at = static_cast<char>('0' + whole);
        return at + 1;
    }
    if (whole >= 10000) {
        at = writeWhole(at, whole / 10000);
        std::memcpy(at, fourDigits + 4 * (whole % 10000), 4);
        return at + 4;
    }
    const int zeros = whole < 100 ? 2 : whole < 1000 ? 1 : 0;
    std::memcpy(at, fourDigits + 4 * whole + zeros, 4);
    return at + 4 - zeros;
}

/// A number of ten-thousandths below 10^12 as a decimal fraction: 33 as 0.0033.
inline char *writeTenThousandths(char *at, quint64 number) {
    at = writeWhole(at, static_cast<quint32>(number / 10000));
    *at++ = '.';
    std::memcpy(at, fourDigits + 4 * (number % 10000), 4);
    return at + 4;
}

/// The same for a number of millionths below 10^14.
inline char *writeMillionths(char *at, quint64 number) {
    at = writeTenThousandths(at, number / 100);
    std::memcpy(at, fourDigits + 4 * (number % 100) + 2, 2);
    return at + 2;
}

/// Rounds to the nearest whole number, a half to the even one as printf does. For values from 0 to below 2^51.
inline quint64 roundedWhole(double value) {
    constexpr double wholeNumbersFrom = 0x1p52;
    return std::bit_cast<quint64>(value + wholeNumbersFrom) - std::bit_cast<quint64>(wholeNumbersFrom);
}

/// For values that are too large for the functions above.
char *writeSlowly(char *at, double value, int decimals);

/// A finite value with 4 or 6 decimals, as printf's "%.4f" and "%.6f".
template <int decimals>
inline char *writeFixed(char *at, float value) {
    static_assert(decimals == 4 || decimals == 6);
    constexpr double parts = decimals == 4 ? 1e4 : 1e6;
    const double size = std::fabs(static_cast<double>(value));
    if (!(size < 1e8))
        return writeSlowly(at, value, decimals);
    *at = '-';
    at += std::signbit(value) ? 1 : 0;
    const quint64 number = roundedWhole(size * parts); // exact: a float times a million fits a double
    return decimals == 4 ? writeTenThousandths(at, number) : writeMillionths(at, number);
}

} // namespace ostrel
