// SPDX-License-Identifier: MIT
#include "chart/table/Digits.h"

#include <array>
#include <charconv>

namespace ostrel {

namespace {

constexpr auto table = [] {
    std::array<char, 4 * 10000 + 4> digits{};
    for (int number = 0; number < 10000; ++number) {
        int rest = number;
        for (int place = 3; place >= 0; --place, rest /= 10)
            digits[4 * number + place] = static_cast<char>('0' + rest % 10);
    }
    return digits;
}();

} // namespace

constinit const char *const fourDigits = table.data();

char *writeSlowly(char *at, double value, int decimals) {
    return std::to_chars(at, at + longestNumber, value, std::chars_format::fixed, decimals).ptr;
}

} // namespace ostrel
