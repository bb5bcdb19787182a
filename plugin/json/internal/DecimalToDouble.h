#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Decimal numbers to doubles, the quick way. Defined here, in the header,
// so that the number reader converts without a call.

#include <array>
#include <cfloat>
#include <cstdint>
#include <cstring>

#include "json/internal/PowersOfFive.h"

namespace tavrin::plugin::json {

// A decimal number: digits * 10^exponent, negated when `negative`.
struct Decimal {
    std::uint64_t digits;
    int exponent;
    bool negative;
};

// Every number of up to this many digits fits in Decimal::digits.
inline constexpr int kMostSignificantDigits = 19;

namespace decimal {

// The quick paths round in double arithmetic: operations must be carried out
// in double precision, rounding to nearest.
static_assert(FLT_EVAL_METHOD == 0, "double operations round to double");

// ---- exact when both factors are exact doubles ------------------------------

inline constexpr std::array<double, 23> kExactPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Digits below 2^53 and powers of ten up to 10^22 are exact doubles, so one
// multiplication or division gives the correctly rounded result.
inline bool ReadExactFactors(const Decimal& d, double& value) {
    constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << 53;
    constexpr int kLargest = static_cast<int>(kExactPowersOfTen.size()) - 1;
    if (d.digits > kExactIntegers || d.exponent < -kLargest || d.exponent > kLargest) return false;
    const double digits = static_cast<double>(d.digits);
    value = d.exponent < 0 ? digits / kExactPowersOfTen[static_cast<std::size_t>(-d.exponent)]
                           : digits * kExactPowersOfTen[static_cast<std::size_t>(d.exponent)];
    return true;
}

// ---- rounding a wide product -------------------------------------------------

// A double's significand (53 bits, the leading one included) and the power
// of two it is scaled by.
struct Rounded {
    std::uint64_t significand;
    int exponent;
};

// The top word of a product whose top bit is at 191 or 190, split at the 53
// bits a double keeps: those, and the bits below them.
struct TopWord {
    int drop;  // bits of the word below the 53
    std::uint64_t kept;
    std::uint64_t rest;
    std::uint64_t half;  // the value of `rest` halfway between two doubles

    explicit TopWord(std::uint64_t word)
        : drop((word >> 63) != 0 ? 11 : 10),
          kept(word >> drop),
          rest(word & ((std::uint64_t{1} << drop) - 1)),
          half(std::uint64_t{1} << (drop - 1)) {}

    // The kept bits, plus one when rounding up, as a 53-bit significand.
    Rounded Rounding(bool up) const {
        Rounded rounded{kept + static_cast<std::uint64_t>(up), 128 + drop};
        if (rounded.significand >> 53 != 0) {
            rounded.significand >>= 1;
            ++rounded.exponent;
        }
        return rounded;
    }
};

// `p` rounded to 53 bits, to nearest, ties to even: p ~ significand *
// 2^exponent. `settled` tells whether adding less than 2^64 to `p` rounds
// alike: it cannot unless it carries into the top word or `p` is a tie.
[[gnu::always_inline]] inline Rounded RoundToDouble(const Wide192& p, bool& settled) {
    const TopWord top(p.word[0]);
    const bool lowIsZero = p.word[1] == 0 && p.word[2] == 0;
    settled = !(top.rest == top.half && lowIsZero) && p.word[1] != UINT64_MAX;
    // Without branches: which way a product rounds is anybody's guess.
    return top.Rounding((top.rest > top.half) |
                        ((top.rest == top.half) & (!lowIsZero | ((top.kept & 1) != 0))));
}

// The rounding of a product whose top word is `word` or `word` + 1 (the
// words below it unknown), when both round alike. Only bits below the 53
// kept at one less than half their range, or at half, leave it open: from
// all ones, the carry of one gives the same double.
[[gnu::always_inline]] inline bool RoundTopWord(std::uint64_t word, Rounded& rounded) {
    const TopWord top(word);
    if (top.rest - (top.half - 1) <= 1) return false;
    rounded = top.Rounding(top.rest > top.half);
    return true;
}

// The rounding of digits * 5^q * 2^shift, `digits` with its top bit set, from
// the full 192-bit product with the 128-bit significand of 5^q. When that is
// not exact, the true value lies between the products with it and with it
// plus one; when both round alike, so does the true value. Otherwise there
// is no quick answer.
inline bool RoundWideProduct(std::uint64_t digits, int q, const PowerOfFive& power, Rounded& rounded) {
    const Wide192 product = Multiply(digits, power.significand);
    bool settled = false;
    rounded = RoundToDouble(product, settled);
    if (settled || (q >= 0 && q <= kLastExactPowerOfFive)) return true;
    const Rounded upper = RoundToDouble(Add(product, digits), settled);
    return upper.significand == rounded.significand && upper.exponent == rounded.exponent;
}

// digits * 5^q * 2^q, rounded. Most numbers are settled by the product with
// the top word of the significand of 5^q alone, whose top word is that of
// the full product or one less: the rest of the product is below 2^128, and
// the part of 5^q that the significand leaves out adds less than 2^64.
inline bool ReadWideProduct(const Decimal& d, double& value) {
    if (d.exponent < kLeastPowerOfFive || d.exponent > kGreatestPowerOfFive) return false;
    const PowerOfFive& power = PowerOfFiveAt(d.exponent);
    const int leadingZeros = __builtin_clzll(d.digits);
    const std::uint64_t digits = d.digits << leadingZeros;
    Rounded rounded;
    if (!RoundTopWord(Multiply(digits, power.significand.high).high, rounded) &&
        !RoundWideProduct(digits, d.exponent, power, rounded))
        return false;
    // value = significand * 2^(rounded.exponent + q - shift - leadingZeros)
    const int biased = rounded.exponent + d.exponent - power.shift - leadingZeros + 52 + 1023;
    if (biased < 1 || biased > 2046) return false;
    const std::uint64_t bits = (static_cast<std::uint64_t>(biased) << 52) |
                               (rounded.significand & ((std::uint64_t{1} << 52) - 1));
    std::memcpy(&value, &bits, sizeof value);
    return true;
}

}  // namespace decimal

// The correctly rounded double of `d`, found quickly for the numbers
// documents hold: results within about 10^-100 to 10^119. False (and `value`
// unset) when there is no quick answer; the caller then converts the number
// another way. Inlined where it is called: a call, with the number and the
// result passed through memory, costs a good part of a quick conversion.
[[gnu::always_inline]] inline bool DecimalToDouble(const Decimal& d, double& value) {
    if (d.digits == 0)
        value = 0.0;
    else if (!decimal::ReadExactFactors(d, value) && !decimal::ReadWideProduct(d, value))
        return false;
    // The sign goes on without a branch: signs of numbers alternate as often
    // as not. The value is +0 or positive here.
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    bits |= static_cast<std::uint64_t>(d.negative) << 63;
    std::memcpy(&value, &bits, sizeof value);
    return true;
}

}  // namespace tavrin::plugin::json
