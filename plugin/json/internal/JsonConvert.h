#pragma once

// Internal to the plug-in (not exported): the two conversion functions that
// registration wraps into function objects. Callers reach them only through
// the factory's registry.

#include <string>

#include "base/AttrSet.h"

namespace tavrin::plugin::json {

// Parses `src` and stores the attribute-set text of the document in *out.
// False (and *out untouched) when either pointer is null, the text does not
// parse or the conversion fails.
bool convertJsonToAttrSetString(const char* src, std::string* out);

// The command form: "p0" is the JSON text, "p1" the hexadecimal address of
// the caller's result string. False when an argument is missing or invalid,
// else the result of convertJsonToAttrSetString.
bool cmdConvertJsonToAttrSetString(tavrin::base::AttrSet& ap);

}  // namespace tavrin::plugin::json
