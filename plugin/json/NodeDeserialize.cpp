#include <memory>
#include <string>
#include <utility>

#include "json/JsonNode.h"
#include "json/Parser.h"

namespace tavrin::plugin::json {

// A null text reads as an empty one (and fails like it).
bool Node::Deserialize(const char* text) {
    Parser parser(text != nullptr ? text : "");
    const std::unique_ptr<Node> result(parser.ParseValue());
    if (result->IsEmpty()) return false;
    *this = std::move(*result);
    return true;
}

bool Node::Deserialize(std::string text) { return Deserialize(text.c_str()); }

}  // namespace tavrin::plugin::json
