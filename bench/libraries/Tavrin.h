#pragma once

#include <string>

#include "json/JsonNode.h"

namespace tavrin::bench {

// The project's document model: Node::Deserialize and Node::Serialize.
class TavrinLibrary {
public:
    static constexpr const char* kName = "tavrin";
    using Tree = tavrin::plugin::json::Node;

    bool Parse(const std::string& text, Tree& tree) { return tree.Deserialize(text.c_str()); }
    std::string Serialize(Tree& tree) { return tree.Serialize(); }
};

}  // namespace tavrin::bench
