#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include <charconv>
#include <string>
#include <type_traits>

namespace tavrin::plugin::json {

// Appends an integer in signed decimal: no "+", no leading zeros.
template <class Integer>
void AppendInteger(std::string& out, Integer value) {
    static_assert(std::is_integral_v<Integer>, "integers only");
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    out.append(digits, static_cast<std::size_t>(result.ptr - digits));
}

// Appends a double as text that reads back as a double of the same bits:
// the shortest such decimal, with ".0" added when it has neither a "." nor
// an exponent ("-0.0" for negative zero). Non-finite values have no text of
// their own: +inf is written as 1e999 and -inf as -1e999 (both overflow back
// to the infinities when read), NaN as 0.0. Independent of the locale.
void AppendDouble(std::string& out, double value);

}  // namespace tavrin::plugin::json
