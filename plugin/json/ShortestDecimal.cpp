#include "json/internal/ShortestDecimal.h"

#include <cstdint>
#include <cstring>

#include "json/internal/PowersOfFive.h"

namespace tavrin::plugin::json {

namespace {

// A number scaled to units: its integer part, and whether anything is left
// below.
struct Scaled {
    std::uint64_t units;
    bool fraction;
};

// floor(log10(2^exponent)) for |exponent| < 1650: 78913 / 2^18 is just below
// log10(2).
int FloorLog10OfPowerOfTwo(int exponent) {
    const long scaled = static_cast<long>(exponent) * 78913;
    return static_cast<int>(scaled >= 0 ? scaled >> 18 : -((-scaled + (1L << 18) - 1) >> 18));
}

// p * 2^-drop. For every value ShortestDecimal scales, drop - 64 lies
// between 57 and 60 and the units stay below 2^64 (checked over all its
// exponents at both ends of the significand), so the units are the upper
// 128 bits moved down.
Scaled Scale(const Wide192& p, int drop) {
    const int right = drop - 64;
    return {(p.word[0] << (64 - right)) | (p.word[1] >> right),
            (p.word[1] << (64 - right)) != 0 || p.word[2] != 0};
}

}  // namespace

// The value's rounding interval, (2m - 1, 2m + 1) * 2^(e-1) for
// value = m * 2^e, scaled by 10^q to 18 or 19 digits. The longest run of
// trailing zeros that a number inside can have gives the shortest length; of
// the numbers of that length inside, the nearest to the value wins. The ends
// themselves, which read back as the value when m is even, are left out:
// within the range, an end is a short decimal only for integers of 2^53 and
// more, whose fixed text has every digit of the value anyway.
bool ShortestDecimal(double value, Decimal& decimal) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    const int biased = static_cast<int>(bits >> 52);
    const std::uint64_t fraction = bits & ((std::uint64_t{1} << 52) - 1);
    if (biased == 0 || fraction == 0) return false;
    const std::uint64_t m = fraction | (std::uint64_t{1} << 52);
    const int e = biased - 1075;
    const int q = 17 - FloorLog10OfPowerOfTwo(e + 52);
    if (q < 0 || q > kLastExactPowerOfFive) return false;
    const PowerOfFive& power = PowerOfFiveAt(q);
    // value * 10^q = (2m) * 2^(e-1) * 5^q * 2^q, and 5^q = significand * 2^-shift.
    const int drop = power.shift - (e - 1 + q);
    // The ends are the middle less and plus the power itself.
    const Wide192 middle = Multiply(2 * m, power.significand);
    const Scaled low = Scale(Subtract(middle, power.significand), drop);
    const Scaled mid = Scale(middle, drop);
    const Scaled high = Scale(Add(middle, power.significand), drop);
    // The least and the greatest number of units inside; dividing both by
    // ten while some multiple of ten lies between them drops trailing digits
    // (ceilings and floors of successive divisions are those of the whole).
    std::uint64_t lowest = low.units + 1;
    std::uint64_t highest = high.units - (high.fraction ? 0 : 1);
    int removed = 0;
    while ((lowest + 99) / 100 <= highest / 100) {
        lowest = (lowest + 99) / 100;
        highest /= 100;
        removed += 2;
    }
    while ((lowest + 9) / 10 <= highest / 10) {
        lowest = (lowest + 9) / 10;
        highest /= 10;
        ++removed;
    }
    if (removed == 0) return false;
    // The value rounded to what is left, halfway to the even candidate, as
    // to_chars chooses.
    const std::uint64_t step = kPowersOfTen[static_cast<std::size_t>(removed)];
    std::uint64_t digits = mid.units / step;
    const std::uint64_t rest = mid.units % step;
    const std::uint64_t half = step / 2;
    // Without a branch: which way a value rounds is anybody's guess.
    const bool up = (rest > half) | ((rest == half) & (mid.fraction | (digits % 2 != 0)));
    digits += static_cast<std::uint64_t>(up);
    if (digits < lowest || digits > highest) return false;
    decimal.digits = digits;
    decimal.exponent = removed - q;
    return true;
}

}  // namespace tavrin::plugin::json
