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
    static_cast<ostream&>(os) << value;
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
