#include "base/Fraction.h"

#include <charconv>
#include <cstdint>
#include <algorithm>
#include <limits>
#include <utility>

namespace tavrin::base {

namespace {

constexpr long long kMin32 = std::numeric_limits<std::int32_t>::min();
constexpr long long kMax32 = std::numeric_limits<std::int32_t>::max();

bool Fits32(long long v) { return v >= kMin32 && v <= kMax32; }

unsigned long long Magnitude(long long v) {
    return v < 0 ? 0ULL - static_cast<unsigned long long>(v) : static_cast<unsigned long long>(v);
}

// A fraction of two magnitudes, and whether it equals the value it stands for.
struct Ratio {
    unsigned long long num;
    unsigned long long den;
    bool exact;
};

// Whether a/b < c/d (b and d not zero), compared through their continued
// fractions so that nothing overflows.
bool Less(unsigned long long a, unsigned long long b, unsigned long long c, unsigned long long d) {
    for (bool flipped = false;; flipped = !flipped) {
        const unsigned long long x = a / b;
        const unsigned long long y = c / d;
        if (x != y) return (x < y) != flipped;
        a %= b;
        c %= d;
        if (a == 0 && c == 0) return false;  // equal
        if (a == 0) return !flipped;         // the first is the whole part, the second above it
        if (c == 0) return flipped;
        std::swap(a, b);  // compare b/a with d/c: the order reverses
        std::swap(c, d);
    }
}

// The fraction nearest to p/q whose two parts do not exceed `limit`, from the
// continued fraction of p/q: the last convergent within the limit, or the
// semiconvergent after it when that one is nearer (more than half the next
// partial quotient always is; exactly half is when the rest of p/q is below
// k0/k1). p/q in lowest terms when it fits; 1/0 for a zero q.
Ratio Approximate(unsigned long long p, unsigned long long q, unsigned long long limit) {
    unsigned long long h0 = 0, h1 = 1;  // numerators of the two latest convergents
    unsigned long long k0 = 1, k1 = 0;  // and their denominators
    while (q != 0) {
        const unsigned long long a = p / q;
        unsigned long long t = a;
        if (h1 != 0) t = std::min(t, (limit - h0) / h1);
        if (k1 != 0) t = std::min(t, (limit - k0) / k1);
        if (t < a) {
            if (k1 == 0 || 2 * t > a || (2 * t == a && Less(p % q, q, k0, k1)))
                return {t * h1 + h0, t * k1 + k0, false};
            return {h1, k1, false};
        }
        h0 = std::exchange(h1, a * h1 + h0);
        k0 = std::exchange(k1, a * k1 + k0);
        p = std::exchange(q, p % q);
    }
    return {h1, k1, true};
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// Reads blanks, an optional sign, digits that fit a long long, and blanks.
// Returns the position after them, or null when there is no digit or the
// number does not fit.
const char* ReadInteger(const char* p, long long& out) {
    while (IsBlank(*p)) ++p;
    const bool negative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    const char* end = p;
    while (*end >= '0' && *end <= '9') ++end;
    unsigned long long magnitude = 0;
    const auto result = std::from_chars(p, end, magnitude);
    if (end == p || result.ec != std::errc()) return nullptr;
    const unsigned long long bound = static_cast<unsigned long long>(std::numeric_limits<long long>::max()) + (negative ? 1 : 0);
    if (magnitude > bound) return nullptr;
    out = negative ? static_cast<long long>(0ULL - magnitude) : static_cast<long long>(magnitude);
    while (IsBlank(*end)) ++end;
    return end;
}

}  // namespace

bool Fraction::From(long long numerator, long long denominator) {
    if (Fits32(numerator) && Fits32(denominator)) {
        num = static_cast<std::int32_t>(numerator);
        den = static_cast<std::int32_t>(denominator);
        return true;
    }
    const Ratio ratio = Approximate(Magnitude(numerator), Magnitude(denominator), kMax32);
    const bool negative = (numerator < 0) != (denominator < 0);
    num = static_cast<std::int32_t>(negative ? -static_cast<long long>(ratio.num)
                                             : static_cast<long long>(ratio.num));
    den = static_cast<std::int32_t>(ratio.den);
    return ratio.exact;
}

bool Fraction::From(const char* text) {
    long long numerator = 0;
    long long denominator = 1;
    const char* p = text == nullptr ? nullptr : ReadInteger(text, numerator);
    if (p != nullptr && *p == '/') p = ReadInteger(p + 1, denominator);
    if (p == nullptr || *p != '\0') {
        From(0LL, 1LL);
        return false;
    }
    return From(numerator, denominator);
}

Fraction::operator std::string() const {
    return std::to_string(num) + "/" + std::to_string(den);
}

}  // namespace tavrin::base
