#pragma once

#include <string>

namespace tavrin::plugin::json {

// Text-to-number conversions of the parser. Both read the same whatever
// locale the host process sets.

// The value of a base-10 integer text ("-" then digits): exactly what strtoll
// in base 10 gives, so values beyond the 64-bit range saturate at the nearest
// limit.
long long ReadInt64(const std::string& text);

// The value of a decimal number text: exactly what strtod gives in the C
// locale, overflow to +-HUGE_VAL and underflow included.
double ReadDouble(const std::string& text);

}  // namespace tavrin::plugin::json
