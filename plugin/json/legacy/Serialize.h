#pragma once

#include <string>

#include "base/Export.h"
#include "json/legacy/Value.h"

namespace json {

// Compact text of a document: an object or an array written without white
// space and without escapes (keys and texts are written as stored). Any other
// value gives the empty text.
TAVRIN_PLUGIN_API std::string Serialize(const Value& value);

}  // namespace json

// Compact text of one value of any type: null, true, false, decimal integers,
// texts between double quotes, fractions as "num/den", floats and doubles as
// the shortest decimal that reads back to the same number ("null" when not
// finite), objects and arrays as json::Serialize writes them.
TAVRIN_PLUGIN_API std::string SerializeValue(const json::Value& value);

// Compact text of an array.
TAVRIN_PLUGIN_API std::string SerializeArray(const json::Array& array);
