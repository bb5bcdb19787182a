#pragma once

#include <string>

#include "base/ostream.h"

namespace tavrin::base {

template <class T>
std::string ToString(const T& value);

template <>
inline std::string ToString<long long>(const long long& value) {
    std::string text;
    ostream_string os(text);
    // Through the stream's table, as the host's insertion is: the compiler,
    // knowing the stream's class here, would otherwise call that class's own
    // function by name.
    ostream* const volatile stream = &os;
    *stream << value;
    return text;
}

template <>
inline std::string ToString<bool>(const bool& value) {
    std::string text;
    ostream_string os(text);
    os << (value ? "true" : "false");
    return text;
}

}  // namespace tavrin::base
