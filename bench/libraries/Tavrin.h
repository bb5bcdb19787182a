#pragma once

#include <memory>
#include <string>
#include <utility>

#include "json/JsonNode.h"
#include "json/Parser.h"

namespace tavrin::bench {

// The project's document model: Node::Deserialize and Node::Serialize.
class TavrinLibrary {
public:
    static constexpr const char* kName = "tavrin";
    using Tree = tavrin::plugin::json::Node;

    bool Parse(const std::string& text, Tree& tree) { return tree.Deserialize(text.c_str()); }
    std::string Serialize(Tree& tree) { return tree.Serialize(); }
};

// The project's public step-by-step reader, Parser::ParseValue, which
// Node::Deserialize falls back on for texts its quick path leaves: timed for
// scaling only, as it should take time in proportion to the text too.
struct TavrinParserLibrary {
    using Tree = tavrin::plugin::json::Node;

    bool Parse(const std::string& text, Tree& tree) {
        const std::unique_ptr<Tree> read(tavrin::plugin::json::Parser(text.c_str()).ParseValue());
        tree = std::move(*read);
        return !tree.IsEmpty();
    }
};

}  // namespace tavrin::bench
