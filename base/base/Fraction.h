#pragma once

#include <cstdint>
#include <string>

#include "base/Export.h"

namespace tavrin::base {

// The framework's rational number: numerator then denominator, two signed
// 32-bit integers. From() is the host's; the default constructor is built by
// every module and gives 0/1.
class TAVRIN_HOST_API Fraction {
public:
    std::int32_t num;
    std::int32_t den;

    Fraction() { From(0LL, 1LL); }

    // Sets num/den. Values that fit in 32 bits are stored as given (no
    // reduction, a zero denominator included). Otherwise the fraction with
    // 32-bit parts nearest in value is stored: the pair in lowest terms when
    // that fits, else the closest approximation (sign on the numerator,
    // parts at most 2147483647). Returns true when the value is kept exactly.
    bool From(long long numerator, long long denominator);

    // Reads "[-]digits[/[-]digits]" (a "+" sign and blanks around each part
    // allowed), then stores as From(numerator, denominator) does. A lone
    // numerator means a denominator of 1. Any other text, or a part beyond
    // the 64-bit range, leaves 0/1 and returns false.
    bool From(const char* text);

    // "num/den" in signed decimal.
    operator std::string() const;
};

}  // namespace tavrin::base
