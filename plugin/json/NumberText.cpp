#include "json/internal/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "json/internal/PowersOfFive.h"
#include "json/internal/ShortestDecimal.h"

namespace tavrin::plugin::json {

namespace {

char* WriteText(char* at, const char* text) {
    const std::size_t length = std::strlen(text);
    std::memcpy(at, text, length);
    return at + length;
}

char* WriteZeros(char* at, int count) {
    std::memset(at, '0', static_cast<std::size_t>(count));
    return at + count;
}

// How many decimal digits `v` (not zero) has: its bits give the count or one
// less (1233 / 4096 is just above log10(2)).
int DigitCount(std::uint64_t v) {
    const int estimate = (64 - __builtin_clzll(v)) * 1233 >> 12;
    return estimate + (v >= kPowersOfTen[static_cast<std::size_t>(estimate)] ? 1 : 0);
}

// The eight digits of `v` (below 10^8, leading zeros included) as text in
// one word, the first digit in its lowest byte: four-digit halves in 32-bit
// lanes, two-digit quarters in 16-bit lanes, digits in bytes, each split by
// multiplying with a reciprocal that is exact for the values a lane holds.
[[gnu::always_inline]] inline std::uint64_t EightDigitsText(std::uint32_t v) {
    const std::uint64_t halves = (v / 10000) | (static_cast<std::uint64_t>(v % 10000) << 32);
    const std::uint64_t hundreds = ((halves * 5243) >> 19) & 0x0000007F0000007Fu;
    const std::uint64_t quarters = hundreds | ((halves - hundreds * 100) << 16);
    const std::uint64_t tens = ((quarters * 205) >> 11) & 0x000F000F000F000Fu;
    return (tens | ((quarters - tens * 10) << 8)) + 0x3030303030303030u;
}

// Stores a word of text, its first character in its lowest byte, at `at`.
void StoreText(char* at, std::uint64_t text) {
    if constexpr (__BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__) text = __builtin_bswap64(text);
    std::memcpy(at, &text, sizeof text);
}

// Writes the `count` digits of `v` (below 10^count) so that they end just
// before `end`, eight at a time, the first group (of 1 to 8 digits) first:
// it is written as a whole word, up to seven bytes past its digits, which
// the groups after it overwrite.
void WriteDigitsBefore(char* end, std::uint64_t v, int count) {
    constexpr std::uint64_t kEightDigits = 100000000;
    std::uint32_t groups[3];  // from the last group
    int full = 0;
    for (; count > 8; count -= 8, ++full) {
        const std::uint64_t rest = v / kEightDigits;
        groups[full] = static_cast<std::uint32_t>(v - rest * kEightDigits);
        v = rest;
    }
    char* at = end - 8 * full - count;
    StoreText(at, EightDigitsText(static_cast<std::uint32_t>(v)) >> (8 * (8 - count)));
    for (at += count; full > 0; at += 8) StoreText(at, EightDigitsText(groups[--full]));
}

// Writes `v` in decimal, without leading zeros; returns the end of the text.
char* WriteUnsigned(char* at, std::uint64_t v) {
    if (v == 0) {
        *at = '0';
        return at + 1;
    }
    const int count = DigitCount(v);
    WriteDigitsBefore(at + count, v, count);
    return at + count;
}

// digits * 10^exponent as to_chars writes a double's shortest digits, with
// ".0" after an integer: in fixed or in scientific notation, whichever is
// shorter, fixed when both are as long; a scientific exponent has a sign and
// at least two digits. Null when fixed notation ends in zeros that stand for
// digits of the double itself (integers of 2^53 and more, which to_chars
// writes in full).
char* WriteDecimal(char* at, const Decimal& d, double magnitude) {
    const int count = DigitCount(d.digits);
    const int power = count - 1 + d.exponent;  // of the first digit
    const int powerDigits = power < 0 ? -power : power;
    const int scientificLength = count + (count > 1 ? 1 : 0) + 2 + (powerDigits < 100 ? 2 : 3);
    const int fixedLength = d.exponent >= 0 ? count + d.exponent : power >= 0 ? count + 1 : count + 1 - power;
    const bool fixed = fixedLength <= scientificLength;
    constexpr double kExactIntegers = 9007199254740992.0;  // 2^53
    if (fixed && d.exponent > 0 && magnitude >= kExactIntegers) return nullptr;
    *at = '-';  // kept only for a negative number, without a branch
    at += d.negative ? 1 : 0;
    if (fixed && d.exponent >= 0) {
        WriteDigitsBefore(at + count, d.digits, count);
        return WriteText(WriteZeros(at + count, d.exponent), ".0");
    }
    if (fixed && power < 0) {
        at = WriteZeros(WriteText(at, "0."), -power - 1);
        WriteDigitsBefore(at + count, d.digits, count);
        return at + count;
    }
    // The digits one place on; the point then goes after the first of them
    // (scientific) or after the integer part (fixed), which moves back.
    WriteDigitsBefore(at + 1 + count, d.digits, count);
    const int whole = fixed ? power + 1 : 1;
    for (int i = 0; i < whole; ++i) at[i] = at[i + 1];
    if (fixed || count > 1) at[whole] = '.';
    at += fixed || count > 1 ? count + 1 : 1;
    if (fixed) return at;
    *at++ = 'e';
    *at++ = power < 0 ? '-' : '+';
    if (powerDigits < 10) *at++ = '0';
    return WriteUnsigned(at, static_cast<std::uint64_t>(powerDigits));
}

}  // namespace

char* WriteInteger(char* at, long long value) {
    // The magnitude in unsigned arithmetic, where the least value has one too.
    std::uint64_t magnitude = static_cast<std::uint64_t>(value);
    if (value < 0) {
        *at++ = '-';
        magnitude = 0 - magnitude;
    }
    return WriteUnsigned(at, magnitude);
}

char* WriteDouble(char* at, double value) {
    if (std::isnan(value)) return WriteText(at, "0.0");
    if (std::isinf(value)) return WriteText(at, value < 0 ? "-1e999" : "1e999");
    const double magnitude = std::fabs(value);
    Decimal shortest{};
    if (ShortestDecimal(magnitude, shortest)) {
        shortest.negative = std::signbit(value);
        if (char* end = WriteDecimal(at, shortest, magnitude)) return end;
    }
    char* end = std::to_chars(at, at + kNumberTextMax, value).ptr;
    const bool marked = std::find_if(at, end, [](char c) { return c == '.' || c == 'e'; }) != end;
    return marked ? end : WriteText(end, ".0");
}

}  // namespace tavrin::plugin::json
