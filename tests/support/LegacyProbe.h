#pragma once

#include <cstdint>

#include "base/Fraction.h"
#include "json/legacy/Value.h"

namespace tavrin::test {

// A json::Value whose fields a test can read, including those its typed
// accessors do not show. Tests build the values they inspect as probes.
struct LegacyProbe : json::Value {
    using json::Value::Value;
    using json::Value::operator=;

    using json::Value::mArrayVal;
    using json::Value::mBoolVal;
    using json::Value::mDoubleVal;
    using json::Value::mFloatVal;
    using json::Value::mFractionVal;
    using json::Value::mIntVal;
    using json::Value::mObjectVal;
    using json::Value::mStringVal;
    using json::Value::mValueType;
};

inline tavrin::base::Fraction MakeFraction(long long num, long long den) {
    tavrin::base::Fraction f;
    f.From(num, den);
    return f;
}

// Values of the two decimal types, which have no constructor of their own.
inline json::Value FloatValue(float f) {
    json::Value v;
    v = f;
    return v;
}

inline json::Value DoubleValue(double d) {
    json::Value v;
    v = d;
    return v;
}

}  // namespace tavrin::test
