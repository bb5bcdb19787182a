#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include <cstdint>

namespace tavrin::plugin::json {

// A decimal number: digits * 10^exponent, negated when `negative`.
struct Decimal {
    std::uint64_t digits;
    int exponent;
    bool negative;
};

// Every number of up to this many digits fits in Decimal::digits.
inline constexpr int kMostSignificantDigits = 19;

// The correctly rounded double of `d`, found quickly for the numbers
// documents hold: results within about 10^-100 to 10^119. False (and `value`
// unset) when there is no quick answer; the caller then converts the number
// another way.
bool DecimalToDouble(const Decimal& d, double& value);

}  // namespace tavrin::plugin::json
