#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Export.h"
#include "base/Fraction.h"
#include "json/legacy/Array.h"
#include "json/legacy/Object.h"
#include "json/legacy/ValueType.h"

namespace json {

class Value;

// Values of different types are unequal unless both are numeric; numbers
// compare in the wider of their two kinds, objects only by identity, arrays
// element by element, fractions by cross-multiplication in 64 bits (0/0
// equals only an identical 0/0).
TAVRIN_PLUGIN_API bool operator==(const Value& a, const Value& b);

// One JSON value of any ValueType. A plain record with one field per type,
// not a union: the type byte says which field is meaningful, and setting a
// value of one type leaves the fields of the others as they were.
//
// Typed access is strict: every accessor needs one type and throws
// std::runtime_error("json mValueType==<requirement> required") otherwise,
// before anything changes. The integer accessors accept the three numeric
// types and always return the integer field, which float and double
// assignments leave untouched.
class TAVRIN_PLUGIN_API Value {
public:
    Value();
    Value(bool value);
    Value(int value);
    Value(const std::string& value);
    // A text, not a boolean.
    Value(const char* value);
    Value(const Object& value);
    Value(const Array& value);
    Value(const tavrin::base::Fraction& value);
    // Copies and moves take the type and only the fields that carry its
    // value (the three numeric fields for any numeric type); the other fields
    // of a new value hold the defaults of Value().
    Value(const Value& other);
    Value(Value&& other) noexcept;
    ~Value();

    // Each sets the one named field and the type, nothing else.
    Value& operator=(int value);
    Value& operator=(float value);
    Value& operator=(double value);
    Value& operator=(const char* value);
    Value& operator=(const std::string& value);
    Value& operator=(bool value);
    Value& operator=(const tavrin::base::Fraction& value);
    Value& operator=(const Object& value);
    Value& operator=(const Array& value);
    Value& operator=(const Value& other);
    Value& operator=(Value&& other) noexcept;

    // Resets the type to NullVal; every field keeps its storage.
    void Clear();

    ValueType GetType() const { return mValueType; }
    bool IsNumeric() const;

    int ToInt() const;
    operator int() const;
    int& IntRef();

    bool ToBool() const;
    operator bool() const;
    bool& BoolRef();

    const std::string& ToString() const;
    operator std::string() const;
    std::string& StringRef();
    operator std::string&();

    const Object& ToObject() const;
    operator Object() const;
    Object& ObjectRef();
    operator Object&();

    const Array& ToArray() const;
    operator Array() const;
    Array& ArrayRef();
    operator Array&();

    const tavrin::base::Fraction& ToFraction() const;
    operator tavrin::base::Fraction() const;
    tavrin::base::Fraction& FractionRef();
    operator tavrin::base::Fraction&();

    // Array element (std::out_of_range past the end).
    Value& operator[](unsigned int index);
    const Value& operator[](unsigned int index) const;
    // Object entry: created as Value() when absent; the const forms need it
    // to exist (std::out_of_range otherwise).
    Value& operator[](const std::string& key);
    Value& operator[](const char* key);
    const Value& operator[](const std::string& key) const;
    const Value& operator[](const char* key) const;

    bool HasKey(const std::string& key) const;
    int HasKeys(const std::vector<std::string>& keys) const;
    int HasKeys(const char** keys, int count) const;

    // Entries of an object, elements of an array, 1 for any other type.
    std::size_t size() const;

protected:
    ValueType mValueType;
    std::int32_t mIntVal;
    float mFloatVal;
    double mDoubleVal;
    std::string mStringVal;
    Object mObjectVal;
    Array mArrayVal;
    bool mBoolVal;
    tavrin::base::Fraction mFractionVal;

private:
    friend struct ValueAccess;
    friend bool operator==(const Value& a, const Value& b);

    void Require(ValueType type) const;
    void RequireNumeric() const;
};

}  // namespace json
