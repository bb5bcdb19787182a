#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include "json/JsonNode.h"

namespace tavrin::plugin::json::detail {

// The quick path of Node::Deserialize: reads a whole document in one pass,
// building every value in place in its container. It logs nothing and gives
// up on the first character it does not expect; the caller then reads the
// text again with the Parser, which says why it fails. Whenever it succeeds,
// `into` holds exactly the tree the Parser would have built from `text`;
// when it fails, `into` is left as it was.
bool BuildTree(const char* text, Node& into);

}  // namespace tavrin::plugin::json::detail
