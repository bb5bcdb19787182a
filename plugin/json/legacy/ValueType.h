#pragma once

namespace json {

// The kind of a json::Value, stored in one byte.
enum ValueType : unsigned char {
    NullVal = 0,
    StringVal = 1,
    IntVal = 2,
    FloatVal = 3,
    DoubleVal = 4,
    ObjectVal = 5,
    ArrayVal = 6,
    BoolVal = 7,
    FractionVal = 8,
};

}  // namespace json
