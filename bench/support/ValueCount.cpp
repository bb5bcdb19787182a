#include "support/ValueCount.h"

#include "json/legacy/Array.h"
#include "json/legacy/Object.h"

namespace tavrin::bench {

using tavrin::plugin::json::Node;

std::size_t CountValues(const Node& node) {
    std::size_t count = 1;
    if (node.IsEmpty()) return count;
    if (node.Is<Node::Array>())
        for (const Node& item : *static_cast<const Node::Array*>(node._buf)) count += CountValues(item);
    if (node.Is<Node::Object>())
        for (const auto& member : *static_cast<const Node::Object*>(node._buf))
            count += CountValues(member.value);
    return count;
}

std::size_t CountValues(const json::Value& value) {
    std::size_t count = 1;
    if (value.GetType() == json::ArrayVal)
        for (const json::Value& item : value.ToArray()) count += CountValues(item);
    if (value.GetType() == json::ObjectVal)
        for (const auto& member : value.ToObject()) count += CountValues(member.value);
    return count;
}

}  // namespace tavrin::bench
