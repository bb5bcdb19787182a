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
// gives a NullVal value; bad text never throws and nothing is logged. A
// nested container that fails to read, or that lies deeper than 256 levels
// (the node parser's bound; the document itself being level 1), reads as NullVal in its place (an array drops it) while the
// rest of the document reads on. White space is blank, tab, LF, VT, FF and
// CR in every locale. Reading costs time linear in the text's length times
// the nesting depth.
TAVRIN_PLUGIN_API Value Deserialize(const std::string& text);

}  // namespace json
