#pragma once

#include <string>

#include "json/legacy/Value.h"

namespace tavrin::test {

// A second legacy reader, written step by step the slow way: it trims, cuts
// and copies substrings for every value, fills objects through their own
// operator[] and converts numbers with the C library. It has no nesting
// bound. Tests compare the library's reader with it on many small texts.
json::Value ReferenceDeserialize(const std::string& text);

}  // namespace tavrin::test
