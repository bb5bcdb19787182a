#include "json/legacy/Value.h"

#include <stdexcept>
#include <utility>

#include "json/legacy/internal/Messages.h"
#include "json/legacy/internal/ValueAccess.h"

namespace json {

namespace {

const char* RequirementMessage(ValueType type) {
    switch (type) {
        case BoolVal: return messages::kBoolRequired;
        case StringVal: return messages::kStringRequired;
        case ObjectVal: return messages::kObjectRequired;
        case ArrayVal: return messages::kArrayRequired;
        case FractionVal: return messages::kFractionRequired;
        default: return messages::kNumberRequired;
    }
}

// 0/1, made once through the fraction's own default constructor: every new
// value starts from a copy of it.
const tavrin::base::Fraction& DefaultFraction() {
    static const tavrin::base::Fraction zero;
    return zero;
}

const char* NonNullText(const char* text) {
    if (text == nullptr) throw std::invalid_argument(messages::kNullText);
    return text;
}

}  // namespace

Value::Value()
    : mValueType(NullVal),
      mIntVal(0),
      mFloatVal(0.0f),
      mDoubleVal(0.0),
      mBoolVal(false),
      mFractionVal(DefaultFraction()) {}

Value::Value(bool value) : Value() {
    mBoolVal = value;
    mValueType = BoolVal;
}

Value::Value(int value) : Value() {
    mIntVal = value;
    mFloatVal = static_cast<float>(value);
    mDoubleVal = static_cast<double>(value);
    mValueType = IntVal;
}

Value::Value(const std::string& value) : Value() {
    mStringVal = value;
    mValueType = StringVal;
}

Value::Value(const char* value) : Value(std::string(NonNullText(value))) {}

Value::Value(const Object& value) : Value() {
    mObjectVal = value;
    mValueType = ObjectVal;
}

Value::Value(const Array& value) : Value() {
    mArrayVal = value;
    mValueType = ArrayVal;
}

Value::Value(const tavrin::base::Fraction& value) : Value() {
    mFractionVal = value;
    mValueType = FractionVal;
}

Value::Value(const Value& other) : Value() { ValueAccess::TakeFields(*this, other); }

Value::Value(Value&& other) noexcept : Value() { ValueAccess::TakeFields(*this, std::move(other)); }

Value::~Value() = default;

Value& Value::operator=(int value) {
    mIntVal = value;
    mValueType = IntVal;
    return *this;
}

Value& Value::operator=(float value) {
    mFloatVal = value;
    mValueType = FloatVal;
    return *this;
}

Value& Value::operator=(double value) {
    mDoubleVal = value;
    mValueType = DoubleVal;
    return *this;
}

Value& Value::operator=(const char* value) {
    mStringVal = NonNullText(value);
    mValueType = StringVal;
    return *this;
}

Value& Value::operator=(const std::string& value) {
    mStringVal = value;
    mValueType = StringVal;
    return *this;
}

Value& Value::operator=(bool value) {
    mBoolVal = value;
    mValueType = BoolVal;
    return *this;
}

Value& Value::operator=(const tavrin::base::Fraction& value) {
    mFractionVal = value;
    mValueType = FractionVal;
    return *this;
}

Value& Value::operator=(const Object& value) {
    mObjectVal = value;
    mValueType = ObjectVal;
    return *this;
}

Value& Value::operator=(const Array& value) {
    mArrayVal = value;
    mValueType = ArrayVal;
    return *this;
}

Value& Value::operator=(const Value& other) {
    if (this != &other) ValueAccess::TakeFields(*this, other);
    return *this;
}

Value& Value::operator=(Value&& other) noexcept {
    if (this != &other) ValueAccess::TakeFields(*this, std::move(other));
    return *this;
}

void Value::Clear() { mValueType = NullVal; }

bool Value::IsNumeric() const {
    return mValueType == IntVal || mValueType == FloatVal || mValueType == DoubleVal;
}

void Value::Require(ValueType type) const {
    if (mValueType != type) throw std::runtime_error(RequirementMessage(type));
}

void Value::RequireNumeric() const {
    if (!IsNumeric()) throw std::runtime_error(RequirementMessage(IntVal));
}

int Value::ToInt() const {
    RequireNumeric();
    return mIntVal;
}

Value::operator int() const { return ToInt(); }

int& Value::IntRef() {
    RequireNumeric();
    return mIntVal;
}

bool Value::ToBool() const {
    Require(BoolVal);
    return mBoolVal;
}

Value::operator bool() const { return ToBool(); }

bool& Value::BoolRef() {
    Require(BoolVal);
    return mBoolVal;
}

const std::string& Value::ToString() const {
    Require(StringVal);
    return mStringVal;
}

Value::operator std::string() const { return ToString(); }

std::string& Value::StringRef() {
    Require(StringVal);
    return mStringVal;
}

Value::operator std::string&() { return StringRef(); }

const Object& Value::ToObject() const {
    Require(ObjectVal);
    return mObjectVal;
}

Value::operator Object() const { return ToObject(); }

Object& Value::ObjectRef() {
    Require(ObjectVal);
    return mObjectVal;
}

Value::operator Object&() { return ObjectRef(); }

const Array& Value::ToArray() const {
    Require(ArrayVal);
    return mArrayVal;
}

Value::operator Array() const { return ToArray(); }

Array& Value::ArrayRef() {
    Require(ArrayVal);
    return mArrayVal;
}

Value::operator Array&() { return ArrayRef(); }

const tavrin::base::Fraction& Value::ToFraction() const {
    Require(FractionVal);
    return mFractionVal;
}

Value::operator tavrin::base::Fraction() const { return ToFraction(); }

tavrin::base::Fraction& Value::FractionRef() {
    Require(FractionVal);
    return mFractionVal;
}

Value::operator tavrin::base::Fraction&() { return FractionRef(); }

Value& Value::operator[](unsigned int index) { return ArrayRef()[index]; }

const Value& Value::operator[](unsigned int index) const { return ToArray()[index]; }

Value& Value::operator[](const std::string& key) { return ObjectRef()[key]; }

Value& Value::operator[](const char* key) { return ObjectRef()[key]; }

const Value& Value::operator[](const std::string& key) const { return ToObject()[key]; }

const Value& Value::operator[](const char* key) const { return ToObject()[key]; }

bool Value::HasKey(const std::string& key) const { return ToObject().HasKey(key); }

int Value::HasKeys(const std::vector<std::string>& keys) const { return ToObject().HasKeys(keys); }

int Value::HasKeys(const char** keys, int count) const { return ToObject().HasKeys(keys, count); }

std::size_t Value::size() const {
    if (mValueType == ObjectVal) return mObjectVal.size();
    if (mValueType == ArrayVal) return mArrayVal.size();
    return 1;
}

}  // namespace json
