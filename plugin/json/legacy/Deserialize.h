#pragma once

#include <string>

#include "base/Export.h"
#include "json/legacy/Value.h"

namespace json {

// A container the reader has entered and not yet left.
enum StackDepthType : unsigned char {
    ObjectDepth = 0,
    ArrayDepth = 1,
};

// Reads a document whose top level is an object or an array. Any failure
// gives a NullVal value; bad text never throws. A nested container that
// fails to read, or that lies deeper than
// tavrin::plugin::json::Parser::kDefaultMaxDepth levels, reads as NullVal in
// its place (and an array drops it) while the rest of the document reads on.
TAVRIN_PLUGIN_API Value Deserialize(const std::string& text);

}  // namespace json
