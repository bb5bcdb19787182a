#pragma once

#include <string>
#include <utility>

#include "json/legacy/Value.h"

namespace json {

// The library's own way into the fields of values and containers, for the
// writer (float and double fields have no public accessor) and the reader
// (which hands finished containers and texts over without copying them).
// Not part of the exported interface.
struct ValueAccess {
    static float Float(const Value& v) { return v.mFloatVal; }
    static double Double(const Value& v) { return v.mDoubleVal; }

    static Value FromText(std::string&& text) {
        Value v;
        v.mStringVal = std::move(text);
        v.mValueType = StringVal;
        return v;
    }

    static Value FromEntries(Object::Table&& entries) {
        Value v;
        v.mObjectVal.mEntries = std::move(entries);
        v.mValueType = ObjectVal;
        return v;
    }

    static Value FromElements(Array::Elements&& elements) {
        Value v;
        v.mArrayVal.mValues = std::move(elements);
        v.mValueType = ArrayVal;
        return v;
    }

    // Makes `slot` exactly what `v` was, every field included.
    static void Replace(Value& slot, Value&& v) noexcept {
        using std::swap;
        swap(slot.mValueType, v.mValueType);
        swap(slot.mIntVal, v.mIntVal);
        swap(slot.mFloatVal, v.mFloatVal);
        swap(slot.mDoubleVal, v.mDoubleVal);
        swap(slot.mStringVal, v.mStringVal);
        slot.mObjectVal.mEntries.swap(v.mObjectVal.mEntries);
        slot.mArrayVal.mValues.swap(v.mArrayVal.mValues);
        swap(slot.mBoolVal, v.mBoolVal);
        swap(slot.mFractionVal, v.mFractionVal);
    }
};

}  // namespace json
