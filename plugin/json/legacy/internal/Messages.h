#pragma once

// Every text the json:: library reports: the what() of the exceptions its
// values, objects and arrays throw. The reader and the writer report nothing
// (a document that cannot be read is a null value).
namespace json::messages {

// std::runtime_error from a typed accessor on a value of another type.
inline constexpr char kBoolRequired[] = "json mValueType==BoolVal required";
inline constexpr char kStringRequired[] = "json mValueType==StringVal required";
inline constexpr char kObjectRequired[] = "json mValueType==ObjectVal required";
inline constexpr char kArrayRequired[] = "json mValueType==ArrayVal required";
inline constexpr char kFractionRequired[] = "json mValueType==FractionVal required";
inline constexpr char kNumberRequired[] = "json mValueType==IsNumeric() required";

// std::invalid_argument for a null pointer argument.
inline constexpr char kNullText[] = "json::Value: null text";
inline constexpr char kNullKey[] = "json::Object: null key";
inline constexpr char kNullKeyList[] = "json::Object: null key list";

// std::out_of_range from the checked element and entry accessors.
inline constexpr char kIndexOutOfRange[] = "json::Array: index out of range";
inline constexpr char kNoEntry[] = "json::Object: no entry for the key";

}  // namespace json::messages
