#pragma once

#include <string>

namespace tavrin::plugin::json {

// Text-to-number conversions of the readers. Both read the same whatever
// locale the host process sets, and take the characters from `first` up to
// (not including) `last`.

// The value of a base-10 integer text ("-" then digits): exactly what strtoll
// in base 10 gives, so values beyond the 64-bit range saturate at the nearest
// limit.
long long ReadInt64(const char* first, const char* last);

// The value of a decimal number text: exactly what strtod gives in the C
// locale, overflow to +-HUGE_VAL and underflow included.
double ReadDouble(const char* first, const char* last);

inline long long ReadInt64(const std::string& text) {
    return ReadInt64(text.data(), text.data() + text.size());
}
inline double ReadDouble(const std::string& text) {
    return ReadDouble(text.data(), text.data() + text.size());
}

}  // namespace tavrin::plugin::json
