#include "base/Fraction.h"

#include <cctype>
#include <cstdint>
#include <limits>

namespace tavrin::base {

namespace {

constexpr long long kMin32 = std::numeric_limits<std::int32_t>::min();
constexpr long long kMax32 = std::numeric_limits<std::int32_t>::max();

bool Fits32(long long v) { return v >= kMin32 && v <= kMax32; }

std::int32_t Saturate32(long long v) {
    if (v < kMin32) return static_cast<std::int32_t>(kMin32);
    if (v > kMax32) return static_cast<std::int32_t>(kMax32);
    return static_cast<std::int32_t>(v);
}

// Greatest common divisor of two magnitudes, computed on unsigned values so
// that the smallest long long needs no negation.
unsigned long long Gcd(unsigned long long a, unsigned long long b) {
    while (b != 0) {
        const unsigned long long r = a % b;
        a = b;
        b = r;
    }
    return a;
}

unsigned long long Magnitude(long long v) {
    return v < 0 ? 0ULL - static_cast<unsigned long long>(v) : static_cast<unsigned long long>(v);
}

// Divides a signed value by a positive divisor of its magnitude.
long long DivideExact(long long v, unsigned long long divisor) {
    const unsigned long long m = Magnitude(v) / divisor;
    if (v >= 0) return static_cast<long long>(m);
    return m > static_cast<unsigned long long>(std::numeric_limits<long long>::max())
               ? std::numeric_limits<long long>::min()
               : -static_cast<long long>(m);
}

// Reads blanks, an optional sign and at least one digit into `out`
// (saturating far outside the 64-bit range). Returns the position after it, or
// null when there is no digit.
const char* ReadInteger(const char* p, long long& out) {
    while (*p == ' ' || *p == '\t') ++p;
    bool negative = false;
    if (*p == '-' || *p == '+') negative = (*p++ == '-');
    if (!std::isdigit(static_cast<unsigned char>(*p))) return nullptr;
    unsigned long long magnitude = 0;
    constexpr unsigned long long kCap = 1ULL << 62;
    for (; std::isdigit(static_cast<unsigned char>(*p)); ++p)
        if (magnitude < kCap) magnitude = magnitude * 10 + static_cast<unsigned>(*p - '0');
    const auto value = static_cast<long long>(magnitude > kCap ? kCap : magnitude);
    out = negative ? -value : value;
    while (*p == ' ' || *p == '\t') ++p;
    return p;
}

}  // namespace

bool Fraction::From(long long numerator, long long denominator) {
    if (Fits32(numerator) && Fits32(denominator)) {
        num = static_cast<std::int32_t>(numerator);
        den = static_cast<std::int32_t>(denominator);
        return true;
    }
    const unsigned long long g = Gcd(Magnitude(numerator), Magnitude(denominator));
    if (g > 1) {
        numerator = DivideExact(numerator, g);
        denominator = DivideExact(denominator, g);
    }
    num = Saturate32(numerator);
    den = Saturate32(denominator);
    return Fits32(numerator) && Fits32(denominator);
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
