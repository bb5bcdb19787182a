#include "memory/NodeFloor.h"

#include <string>
#include <vector>

namespace tavrin::bench {

namespace {

using tavrin::plugin::json::Node;
using Pair = Node::Object::value_type;

// Heap bytes of a text beyond the string object itself.
std::size_t TextBytes(const std::string& text) {
    static const std::size_t inlineCapacity = std::string().capacity();
    return text.size() > inlineCapacity ? text.size() + 1 : 0;
}

template <class T>
const T& Held(const Node& node) {
    return *static_cast<const T*>(node._buf);
}

// The value's buffer and the storage below it; the Node itself is counted by
// whoever holds it.
std::size_t ValueBytes(const Node& node) {
    if (node.IsEmpty()) return 0;
    if (node.Is<std::string>()) return sizeof(std::string) + TextBytes(Held<std::string>(node));
    if (node.Is<Node::Array>()) {
        const Node::Array& items = Held<Node::Array>(node);
        std::size_t bytes = sizeof(Node::Array) + items.size() * sizeof(Node);
        for (const Node& item : items) bytes += ValueBytes(item);
        return bytes;
    }
    if (node.Is<Node::Object>()) {
        const Node::Object& members = Held<Node::Object>(node);
        std::size_t bytes = sizeof(Node::Object) + members.size() * sizeof(Pair);
        for (const Pair& member : members) bytes += TextBytes(member.key) + ValueBytes(member.value);
        return bytes;
    }
    if (node.Is<bool>()) return sizeof(bool);
    if (node.Is<long long>()) return sizeof(long long);
    if (node.Is<double>()) return sizeof(double);
    return sizeof(tavrin::base::Fraction);
}

}  // namespace

std::size_t NodeFloorBytes(const Node& root) { return sizeof(Node) + ValueBytes(root); }

}  // namespace tavrin::bench
