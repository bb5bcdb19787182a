#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "json/JsonNode.h"

namespace tavrin::test {

using tavrin::plugin::json::Node;

inline Node Int(long long value) { return Node(value); }
inline Node Real(double value) { return Node(value); }
inline Node Text(const char* value) { return Node(std::string(value)); }

inline Node MakeArray(std::initializer_list<Node> items) {
    Node node;
    node.Init<Node::Array>(nullptr);
    for (const Node& item : items) node.As<Node::Array>().push_back(item);
    return node;
}

inline Node MakeObject(std::initializer_list<std::pair<const char*, Node>> members) {
    Node node;
    node.Init<Node::Object>(nullptr);
    for (const auto& member : members) node.As<Node::Object>()[member.first] = member.second;
    return node;
}

// `inner` moved into a new one-element array, or into a new object under "k".
inline Node Nest(Node inner, bool array) {
    Node outer;
    if (array) {
        outer.Init<Node::Array>(nullptr);
        outer.As<Node::Array>().push_back(std::move(inner));
    } else {
        outer.Init<Node::Object>(nullptr);
        outer.As<Node::Object>()["k"] = std::move(inner);
    }
    return outer;
}

// Arrays nested `depth` levels deep around the int64 1: [[[...[1]...]]].
// Built by moving each level into the next, so building is linear.
inline Node Chain(int depth) {
    Node node = Int(1);
    for (int level = 0; level < depth; ++level) node = Nest(std::move(node), true);
    return node;
}

}  // namespace tavrin::test
