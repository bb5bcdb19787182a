#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Exact wide products, powers of ten and powers of five as 128-bit
// significands: what the conversions between decimal and binary numbers need.

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavrin::plugin::json {

// An unsigned 128-bit number.
struct Wide128 {
    std::uint64_t high;
    std::uint64_t low;
};

// a * b from four 32-bit products: for machines without a 128-bit type.
inline Wide128 MultiplyByHalves(std::uint64_t a, std::uint64_t b) {
    const std::uint64_t aLow = a & 0xFFFFFFFFu, aHigh = a >> 32;
    const std::uint64_t bLow = b & 0xFFFFFFFFu, bHigh = b >> 32;
    const std::uint64_t lowLow = aLow * bLow, lowHigh = aLow * bHigh;
    const std::uint64_t highLow = aHigh * bLow, highHigh = aHigh * bHigh;
    const std::uint64_t middle = (lowLow >> 32) + (lowHigh & 0xFFFFFFFFu) + (highLow & 0xFFFFFFFFu);
    return {highHigh + (lowHigh >> 32) + (highLow >> 32) + (middle >> 32),
            (middle << 32) | (lowLow & 0xFFFFFFFFu)};
}

inline Wide128 Multiply(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
    const unsigned __int128 product = static_cast<unsigned __int128>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
    return MultiplyByHalves(a, b);
#endif
}

// A 192-bit product, most significant word first.
struct Wide192 {
    std::uint64_t word[3];
};

inline Wide192 Multiply(std::uint64_t a, Wide128 b) {
    const Wide128 high = Multiply(a, b.high);
    const Wide128 low = Multiply(a, b.low);
    const std::uint64_t middle = high.low + low.high;
    return {{high.high + (middle < high.low ? 1 : 0), middle, low.low}};
}

inline Wide192 Add(Wide192 a, std::uint64_t b) {
    a.word[2] += b;
    if (a.word[2] < b && ++a.word[1] == 0) ++a.word[0];
    return a;
}

inline Wide192 Add(Wide192 a, Wide128 b) {
    a = Add(a, b.low);
    a.word[1] += b.high;
    if (a.word[1] < b.high) ++a.word[0];
    return a;
}

// a - b, a not below b.
inline Wide192 Subtract(Wide192 a, Wide128 b) {
    const bool borrowLow = a.word[2] < b.low;
    a.word[2] -= b.low;
    const std::uint64_t take = b.high + (borrowLow ? 1 : 0);
    const bool borrowHigh = (a.word[1] < take) | (borrowLow & (take == 0));
    a.word[1] -= take;
    if (borrowHigh) --a.word[0];
    return a;
}

// 10^0 to 10^19, every power of ten below 2^64.
inline constexpr std::array<std::uint64_t, 20> kPowersOfTen = [] {
    std::array<std::uint64_t, 20> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& p : powers) {
        p = power;
        power *= 10;
    }
    return powers;
}();

// 5^q for q from kLeastPowerOfFive to kGreatestPowerOfFive:
// floor(5^q * 2^shift), where shift makes the significand lie in
// [2^127, 2^128). Exact for 0 <= q <= kLastExactPowerOfFive, where 5^q has at
// most 128 bits.
inline constexpr int kLeastPowerOfFive = -100;
inline constexpr int kGreatestPowerOfFive = 100;
inline constexpr int kLastExactPowerOfFive = 55;

struct PowerOfFive {
    Wide128 significand;
    int shift;
};

// The table, computed from its definition by the compiler, so that looking
// a power up is an index.
extern const std::array<PowerOfFive, kGreatestPowerOfFive - kLeastPowerOfFive + 1> kPowersOfFive;

inline const PowerOfFive& PowerOfFiveAt(int q) {
    return kPowersOfFive[static_cast<std::size_t>(q - kLeastPowerOfFive)];
}

}  // namespace tavrin::plugin::json
