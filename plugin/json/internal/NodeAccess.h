#pragma once

#include "json/JsonNode.h"

// Internal helpers of the node's own sources: typed access that never logs
// and never throws.
namespace tavrin::plugin::json::detail {

// The node's value as T, or null when the node is not of kind T or holds no
// value (it was never given one, or it was taken away).
template <class T>
T* ValueOf(const Node& node) {
    return node.Is<T>() && node._buf != nullptr ? static_cast<T*>(node._buf) : nullptr;
}

// True when the node holds an Array or an Object value.
inline bool IsFilledContainer(const Node& node) {
    return node._buf != nullptr && (node.Is<Node::Array>() || node.Is<Node::Object>());
}

// A node of `source`'s kind, with its type record and handlers, holding no
// value.
inline Node KindOf(const Node& source) {
    Node shell;
    shell._type = source._type;
    shell._destroy = source._destroy;
    shell._create = source._create;
    shell._copy = source._copy;
    return shell;
}

}  // namespace tavrin::plugin::json::detail
