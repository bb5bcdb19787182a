#include "support/RandomTree.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <unordered_set>
#include <utility>

#include "base/Hash.h"

namespace tavrin::test {

using tavrin::plugin::json::Node;

Node RandomTree::Document(int depth, int width) { return Container(Below(2) == 0, depth, width); }

Node RandomTree::DeepDocument(int depth) {
    Node node = Scalar();
    for (int level = depth; level > 0; --level) {
        const bool array = level % 2 == 1;
        Node outer;
        if (array) {
            outer.Init<Node::Array>(nullptr);
            auto& items = *static_cast<Node::Array*>(outer._buf);
            items.push_back(Scalar());
            items.push_back(std::move(node));
            items.push_back(Scalar());
        } else {
            outer.Init<Node::Object>(nullptr);
            auto& members = *static_cast<Node::Object*>(outer._buf);
            members["before"] = Scalar();
            members["next"] = std::move(node);
            members["after"] = Scalar();
        }
        node = std::move(outer);
    }
    return node;
}

Node RandomTree::WideArray(int size) {
    Node node;
    node.Init<Node::Array>(nullptr);
    auto& items = *static_cast<Node::Array*>(node._buf);
    for (int i = 0; i < size; ++i) items.push_back(Scalar());
    return node;
}

Node RandomTree::WideObject(int size) {
    Node node;
    node.Init<Node::Object>(nullptr);
    auto& members = *static_cast<Node::Object*>(node._buf);
    // Appended directly (a lookup per key would make this quadratic); a key
    // whose hash is taken already is left out, as the table would merge it.
    std::unordered_set<std::uint32_t> hashes;
    for (int i = 0; i < size; ++i) {
        std::string key = "k" + std::to_string(i) + EscapedText(4);
        const std::uint32_t hash = tavrin::base::Hash(key, '\0');
        if (hashes.insert(hash).second) members.emplace_back(hash, std::move(key), Scalar());
    }
    return node;
}

Node RandomTree::Value(int depth, int width) {
    if (depth > 1 && Below(4) == 0) return Container(Below(2) == 0, depth - 1, width);
    return Scalar();
}

Node RandomTree::Container(bool array, int depth, int width) {
    Node node;
    const int count = static_cast<int>(Below(static_cast<unsigned>(width) + 1));
    if (array) {
        node.Init<Node::Array>(nullptr);
        auto& items = *static_cast<Node::Array*>(node._buf);
        for (int i = 0; i < count; ++i) items.push_back(Value(depth, width));
    } else {
        node.Init<Node::Object>(nullptr);
        auto& members = *static_cast<Node::Object*>(node._buf);
        for (int i = 0; i < count; ++i) members[EscapedText(6)] = Value(depth, width);
    }
    return node;
}

Node RandomTree::Scalar() {
    switch (Below(5)) {
        case 0:
            return Node(Below(2) == 0);
        case 1: {
            const long long extremes[] = {0, -1, INT64_MAX, INT64_MIN};
            if (Below(8) == 0) return Node(extremes[Below(4)]);
            const auto wide = static_cast<long long>((std::uint64_t{_random()} << 32) | _random());
            return Node(Below(2) == 0 ? wide : wide % 1000);
        }
        case 2: {
            double value;
            do {
                const std::uint64_t bits = (std::uint64_t{_random()} << 32) | _random();
                std::memcpy(&value, &bits, sizeof value);
            } while (!std::isfinite(value));
            return Node(Below(3) == 0 ? std::round(value) : value);
        }
        case 3: {
            tavrin::base::Fraction fraction;
            fraction.From(static_cast<std::int32_t>(_random()),
                          static_cast<std::int32_t>(_random() & 0x7FFFFFFFu));
            return Node(fraction);
        }
        default:
            return Node(EscapedText(12));
    }
}

std::string RandomTree::EscapedText(int maxLength) {
    static const char kHex[] = "0123456789abcdefABCDEF";
    static const char kEscapes[] = "\"\\/bfnrt";
    std::string text;
    const int length = static_cast<int>(Below(static_cast<unsigned>(maxLength) + 1));
    for (int i = 0; i < length; ++i) {
        const unsigned pick = Below(10);
        if (pick == 0) {
            text += '\\';
            text += kEscapes[Below(8)];
        } else if (pick == 1) {
            text += "\\u";
            for (int digit = 0; digit < 4; ++digit) text += kHex[Below(22)];
        } else if (pick == 2) {
            text += static_cast<char>(128 + Below(128));
        } else {
            char c;
            do c = static_cast<char>(32 + Below(95));
            while (c == '"' || c == '\\');
            text += c;
        }
    }
    return text;
}

}  // namespace tavrin::test
