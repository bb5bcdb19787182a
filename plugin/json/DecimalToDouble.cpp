#include "json/internal/DecimalToDouble.h"

#include <array>
#include <cfloat>
#include <cstdint>
#include <cstring>

namespace tavrin::plugin::json {

namespace {

// The quick paths round in double arithmetic: operations must be carried out
// in double precision, rounding to nearest.
static_assert(FLT_EVAL_METHOD == 0, "double operations round to double");

// ---- the text as digits * 10^exponent ---------------------------------------

constexpr int kLargestExponentRead = 100000;

bool IsDigitChar(char c) { return c >= '0' && c <= '9'; }
unsigned DigitOf(char c) { return static_cast<unsigned>(c - '0'); }

const char* SkipDigits(const char* p, const char* last) {
    while (p != last && IsDigitChar(*p)) ++p;
    return p;
}

const char* SkipZeros(const char* p, const char* last) {
    while (p != last && *p == '0') ++p;
    return p;
}

std::uint64_t Accumulate(std::uint64_t sum, const char* p, const char* last) {
    for (; p != last; ++p) sum = sum * 10 + DigitOf(*p);
    return sum;
}

// Reads "[-]digits[.digits][(e|E)[+|-]digits]" to its end. False for any
// other text and for more significant digits than fit.
bool Decompose(const char* p, const char* last, Decimal& d) {
    d.negative = p != last && *p == '-';
    if (d.negative) ++p;
    const char* integer = p;
    const char* integerEnd = p = SkipDigits(p, last);
    const char* fraction = p;
    const char* fractionEnd = p;
    if (p != last && *p == '.') {
        fraction = ++p;
        fractionEnd = p = SkipDigits(p, last);
    }
    int exponent = 0;
    if (p != last && (*p == 'e' || *p == 'E')) {
        ++p;
        const bool negative = p != last && *p == '-';
        if (p != last && (*p == '-' || *p == '+')) ++p;
        for (; p != last && IsDigitChar(*p); ++p)
            if (exponent < kLargestExponentRead) exponent = exponent * 10 + static_cast<int>(DigitOf(*p));
        if (negative) exponent = -exponent;
    }
    if (p != last) return false;
    d.exponent = exponent - static_cast<int>(fractionEnd - fraction);
    // The significant digits: from the first that is not zero on.
    integer = SkipZeros(integer, integerEnd);
    if (integer == integerEnd) fraction = SkipZeros(fraction, fractionEnd);
    if ((integerEnd - integer) + (fractionEnd - fraction) > kMostSignificantDigits) return false;
    d.digits = Accumulate(Accumulate(0, integer, integerEnd), fraction, fractionEnd);
    return true;
}

// ---- exact when both factors are exact doubles ------------------------------

constexpr std::array<double, 23> kExactPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Digits below 2^53 and powers of ten up to 10^22 are exact doubles, so one
// multiplication or division gives the correctly rounded result.
bool ReadExactFactors(const Decimal& d, double& value) {
    constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << 53;
    constexpr int kLargest = static_cast<int>(kExactPowersOfTen.size()) - 1;
    if (d.digits > kExactIntegers || d.exponent < -kLargest || d.exponent > kLargest) return false;
    const double digits = static_cast<double>(d.digits);
    value = d.exponent < 0 ? digits / kExactPowersOfTen[static_cast<std::size_t>(-d.exponent)]
                           : digits * kExactPowersOfTen[static_cast<std::size_t>(d.exponent)];
    return true;
}

// ---- wide integers -----------------------------------------------------------

struct Wide128 {
    std::uint64_t high;
    std::uint64_t low;
};

Wide128 Multiply(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
    const unsigned __int128 product = static_cast<unsigned __int128>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
    const std::uint64_t aLow = a & 0xFFFFFFFFu, aHigh = a >> 32;
    const std::uint64_t bLow = b & 0xFFFFFFFFu, bHigh = b >> 32;
    const std::uint64_t lowLow = aLow * bLow, lowHigh = aLow * bHigh;
    const std::uint64_t highLow = aHigh * bLow, highHigh = aHigh * bHigh;
    const std::uint64_t middle = (lowLow >> 32) + (lowHigh & 0xFFFFFFFFu) + (highLow & 0xFFFFFFFFu);
    return {highHigh + (lowHigh >> 32) + (highLow >> 32) + (middle >> 32),
            (middle << 32) | (lowLow & 0xFFFFFFFFu)};
#endif
}

// A 192-bit product, most significant word first.
struct Wide192 {
    std::uint64_t word[3];
};

Wide192 Multiply(std::uint64_t a, Wide128 b) {
    const Wide128 high = Multiply(a, b.high);
    const Wide128 low = Multiply(a, b.low);
    const std::uint64_t middle = high.low + low.high;
    return {{high.high + (middle < high.low ? 1 : 0), middle, low.low}};
}

Wide192 Add(Wide192 a, std::uint64_t b) {
    a.word[2] += b;
    if (a.word[2] < b && ++a.word[1] == 0) ++a.word[0];
    return a;
}

// ---- powers of five ----------------------------------------------------------

// Powers 5^q for q from kLeastPower to kGreatestPower as 128-bit
// significands: floor(5^q * 2^shift), where shift makes the result lie in
// [2^127, 2^128). Exact for 0 <= q <= 55, where 5^q has at most 128 bits.
constexpr int kLeastPower = -100;
constexpr int kGreatestPower = 100;
constexpr int kLastExactPower = 55;

struct Power {
    Wide128 significand;
    int shift;
};

// An unsigned integer of up to kWords 32-bit words, least significant first,
// enough for 2^(128 + bits of 5^100) and for 5^100 itself.
class BigNumber {
public:
    static constexpr int kWords = 16;

    explicit BigNumber(int powerOfTwo) { _word[static_cast<std::size_t>(powerOfTwo / 32)] = 1u << (powerOfTwo % 32); }

    void Multiply(std::uint32_t factor) {
        std::uint64_t carry = 0;
        for (std::uint32_t& w : _word) {
            carry += static_cast<std::uint64_t>(w) * factor;
            w = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    // Floor division.
    void Divide(std::uint32_t divisor) {
        std::uint64_t rest = 0;
        for (int i = kWords - 1; i >= 0; --i) {
            rest = (rest << 32) | _word[static_cast<std::size_t>(i)];
            _word[static_cast<std::size_t>(i)] = static_cast<std::uint32_t>(rest / divisor);
            rest %= divisor;
        }
    }
    int Bits() const {
        for (int i = kWords - 1; i >= 0; --i)
            for (int b = 31; b >= 0; --b)
                if ((_word[static_cast<std::size_t>(i)] >> b) & 1u) return i * 32 + b + 1;
        return 0;
    }
    // The 128 bits from the most significant one down (zeros below the last
    // bit when there are fewer), and how far they were shifted: the number is
    // floor(result * 2^-shift).
    Power Top128() const {
        const int shift = 128 - Bits();
        std::uint64_t part[2] = {0, 0};
        for (int bit = 0; bit < 128; ++bit) {
            const int source = bit - shift;
            if (source >= 0 && Bit(source)) part[bit / 64] |= std::uint64_t{1} << (bit % 64);
        }
        return {{part[1], part[0]}, shift};
    }

private:
    bool Bit(int n) const { return (_word[static_cast<std::size_t>(n / 32)] >> (n % 32)) & 1u; }
    std::array<std::uint32_t, kWords> _word{};
};

class PowerTable {
public:
    PowerTable() {
        BigNumber power(0);
        for (int q = 0; q <= kGreatestPower; ++q, power.Multiply(5)) At(q) = power.Top128();
        // floor(floor(n / 5) / 5) is floor(n / 25): dividing a large power of
        // two by five again and again keeps every quotient exact.
        constexpr int kDividend = 128 + 240;
        BigNumber quotient(kDividend);
        for (int q = -1; q >= kLeastPower; --q) {
            quotient.Divide(5);
            Power& p = At(q);
            p = quotient.Top128();
            p.shift += kDividend;
        }
    }
    const Power& operator[](int q) const { return _powers[static_cast<std::size_t>(q - kLeastPower)]; }

private:
    Power& At(int q) { return _powers[static_cast<std::size_t>(q - kLeastPower)]; }
    std::array<Power, kGreatestPower - kLeastPower + 1> _powers{};
};

// ---- rounding a wide product -------------------------------------------------

// A double's significand (53 bits, the leading one included) and the power
// of two it is scaled by.
struct Rounded {
    std::uint64_t significand;
    int exponent;
};

// `p` (its top bit at 191 or 190) rounded to 53 bits, to nearest, ties to
// even: p ~ significand * 2^exponent. `settled` tells whether adding less than
// 2^64 to `p` rounds alike: it cannot unless it carries into the top word or
// `p` is a tie.
Rounded RoundToDouble(const Wide192& p, bool& settled) {
    const int drop = (p.word[0] >> 63) != 0 ? 11 : 10;  // bits of the top word below the 53
    std::uint64_t significand = p.word[0] >> drop;
    const std::uint64_t half = std::uint64_t{1} << (drop - 1);
    const std::uint64_t rest = p.word[0] & ((std::uint64_t{1} << drop) - 1);
    const bool lowIsZero = p.word[1] == 0 && p.word[2] == 0;
    const bool tie = rest == half && lowIsZero;
    settled = !tie && p.word[1] != UINT64_MAX;
    if (rest > half || (rest == half && (!lowIsZero || (significand & 1) != 0))) ++significand;
    int exponent = 128 + drop;
    if (significand >> 53 != 0) {
        significand >>= 1;
        ++exponent;
    }
    return {significand, exponent};
}

// digits * 5^q * 2^q from the 128-bit significand of 5^q. When that is not
// exact, the true value lies between the products with it and with it plus
// one; when both round alike, so does the true value. Otherwise there is no
// quick answer.
bool ReadWideProduct(const Decimal& d, double& value) {
    if (d.exponent < kLeastPower || d.exponent > kGreatestPower) return false;
    static const PowerTable powers;
    const Power& power = powers[d.exponent];
    const int leadingZeros = __builtin_clzll(d.digits);
    const std::uint64_t digits = d.digits << leadingZeros;
    const Wide192 product = Multiply(digits, power.significand);
    bool settled = false;
    const Rounded rounded = RoundToDouble(product, settled);
    if (!settled && !(d.exponent >= 0 && d.exponent <= kLastExactPower)) {
        const Rounded upper = RoundToDouble(Add(product, digits), settled);
        if (upper.significand != rounded.significand || upper.exponent != rounded.exponent) return false;
    }
    // value = significand * 2^(rounded.exponent + q - shift - leadingZeros)
    const int biased = rounded.exponent + d.exponent - power.shift - leadingZeros + 52 + 1023;
    if (biased < 1 || biased > 2046) return false;
    const std::uint64_t bits = (static_cast<std::uint64_t>(biased) << 52) |
                               (rounded.significand & ((std::uint64_t{1} << 52) - 1));
    std::memcpy(&value, &bits, sizeof value);
    return true;
}

}  // namespace

bool DecimalToDouble(const char* first, const char* last, double& value) {
    Decimal d;
    return Decompose(first, last, d) && DecimalToDouble(d, value);
}

bool DecimalToDouble(const Decimal& d, double& value) {
    if (d.digits == 0)
        value = 0.0;
    else if (!ReadExactFactors(d, value) && !ReadWideProduct(d, value))
        return false;
    if (d.negative) value = -value;
    return true;
}

}  // namespace tavrin::plugin::json
