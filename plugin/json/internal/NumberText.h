#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include <cstddef>

namespace tavrin::plugin::json {

// Room enough for any text the writers below make, with what they may
// write past its end.
inline constexpr std::size_t kNumberTextMax = 40;

// Writes an integer in signed decimal (no "+", no leading zeros) at `at`;
// returns the end of the text.
char* WriteInteger(char* at, long long value);

// Writes a double at `at` as text that reads back as a double of the same
// bits: the shortest such decimal, with ".0" added when it has neither a "."
// nor an exponent ("-0.0" for negative zero). Non-finite values have no text
// of their own: +inf is written as 1e999 and -inf as -1e999 (both overflow
// back to the infinities when read), NaN as 0.0. Independent of the locale.
// Returns the end of the text.
char* WriteDouble(char* at, double value);

}  // namespace tavrin::plugin::json
