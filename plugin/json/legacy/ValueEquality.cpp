#include <cstdint>

#include "json/legacy/Value.h"

namespace json {

namespace {

bool SameFraction(const tavrin::base::Fraction& a, const tavrin::base::Fraction& b) {
    if (a.num == b.num && a.den == b.den) return true;
    const bool aUndefined = a.num == 0 && a.den == 0;
    const bool bUndefined = b.num == 0 && b.den == 0;
    if (aUndefined || bUndefined) return false;
    return static_cast<std::int64_t>(a.num) * b.den == static_cast<std::int64_t>(a.den) * b.num;
}

bool SameElements(const Array& a, const Array& b) {
    if (a.size() != b.size()) return false;
    for (auto ia = a.begin(), ib = b.begin(); ia != a.end(); ++ia, ++ib)
        if (!(*ia == *ib)) return false;
    return true;
}

}  // namespace

// Numbers compare in the wider kind of the pair: int with int exactly, int
// with float in single precision, anything with a double in double precision.
bool operator==(const Value& a, const Value& b) {
    if (a.mValueType != b.mValueType && !(a.IsNumeric() && b.IsNumeric())) return false;
    switch (a.mValueType) {
        case NullVal: return true;
        case StringVal: return a.mStringVal == b.mStringVal;
        case ObjectVal: return &a == &b;
        case ArrayVal: return SameElements(a.mArrayVal, b.mArrayVal);
        case BoolVal: return a.mBoolVal == b.mBoolVal;
        case FractionVal: return SameFraction(a.mFractionVal, b.mFractionVal);
        default: break;
    }
    const ValueType ta = a.mValueType;
    const ValueType tb = b.mValueType;
    if (ta == IntVal && tb == IntVal) return a.mIntVal == b.mIntVal;
    if (ta == DoubleVal || tb == DoubleVal) {
        const double da = ta == IntVal ? a.mIntVal : ta == FloatVal ? a.mFloatVal : a.mDoubleVal;
        const double db = tb == IntVal ? b.mIntVal : tb == FloatVal ? b.mFloatVal : b.mDoubleVal;
        return da == db;
    }
    const float fa = ta == IntVal ? static_cast<float>(a.mIntVal) : a.mFloatVal;
    const float fb = tb == IntVal ? static_cast<float>(b.mIntVal) : b.mFloatVal;
    return fa == fb;
}

}  // namespace json
