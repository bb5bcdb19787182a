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
    // Gives `to` the type and the fields that carry the value of `from`. The
    // source may live inside the target's own object or array: its type is
    // read first, and the container assignments take their copy (or storage)
    // before they release anything.
    template <class Source>
    static void TakeFields(Value& to, Source&& from) {
        const ValueType type = from.mValueType;
        switch (type) {
            case IntVal:
            case FloatVal:
            case DoubleVal:
                to.mIntVal = from.mIntVal;
                to.mFloatVal = from.mFloatVal;
                to.mDoubleVal = from.mDoubleVal;
                break;
            case StringVal: to.mStringVal = std::forward<Source>(from).mStringVal; break;
            case ObjectVal: to.mObjectVal = std::forward<Source>(from).mObjectVal; break;
            case ArrayVal: to.mArrayVal = std::forward<Source>(from).mArrayVal; break;
            case BoolVal: to.mBoolVal = from.mBoolVal; break;
            case FractionVal: to.mFractionVal = from.mFractionVal; break;
            case NullVal: break;
        }
        to.mValueType = type;
    }

    static float Float(const Value& v) { return v.mFloatVal; }
    static double Double(const Value& v) { return v.mDoubleVal; }

    // The setters below give a value its type and the one field that holds
    // it, taking the storage over.
    static void SetInt(Value& v, int number) {
        v.mIntVal = number;
        v.mFloatVal = static_cast<float>(number);
        v.mDoubleVal = static_cast<double>(number);
        v.mValueType = IntVal;
    }

    static void SetText(Value& v, std::string&& text) {
        v.mStringVal = std::move(text);
        v.mValueType = StringVal;
    }

    static void SetEntries(Value& v, Object::Table&& entries) {
        v.mObjectVal.mEntries = std::move(entries);
        v.mValueType = ObjectVal;
    }

    static void SetElements(Value& v, Array::Elements&& elements) {
        v.mArrayVal.mValues = std::move(elements);
        v.mValueType = ArrayVal;
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
