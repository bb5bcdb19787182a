// JSON to attribute-set text: two mutually recursive walkers over a parsed
// Node tree and the two functions the plug-in registers with the host.
#include "json/JsonConvert.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/Log.h"
#include "base/ToString.h"
#include "json/JsonNode.h"

namespace tavrin::plugin::json {

using tavrin::base::AttrSet;

namespace {

enum class Kind { String, Int64, Bool, Array, Object, Other };

// Kinds are tested in the order string, integer, boolean, array, object; a
// node that lost its value counts as "other".
Kind KindOf(const Node& node) {
    if (node.IsEmpty()) return Kind::Other;
    if (node.Is<std::string>()) return Kind::String;
    if (node.Is<long long>()) return Kind::Int64;
    if (node.Is<bool>()) return Kind::Bool;
    if (node.Is<Node::Array>()) return Kind::Array;
    if (node.Is<Node::Object>()) return Kind::Object;
    return Kind::Other;
}

// The text of a string, integer or boolean node.
std::string ScalarText(Node& node, Kind kind) {
    if (kind == Kind::String) return node.As<std::string>();
    if (kind == Kind::Int64) return tavrin::base::ToString<long long>(node.As<long long>());
    return tavrin::base::ToString<bool>(node.As<bool>());
}

// '{', the text, '}'.
std::string Braced(const std::string& text) {
    std::string braced;
    braced.reserve(text.size() + 2);
    braced += '{';
    braced += text;
    braced += '}';
    return braced;
}

// Tags of the two helpers below, which log under the walkers' name.
struct ListText {};
struct SetText {};

bool convert(Node& src, std::string& out);
bool convert(const char* key, Node& src, AttrSet& ap);

// Both walks below visit the elements and members in place instead of going
// through Node::Foreach and a std::function: the same visits and results,
// with a quarter of the stack per nesting level, so that the deepest document
// the parser admits converts on a small thread stack.

// Walks an array's elements with the list walker; false at the first that
// fails.
bool WalkElements(Node& array, std::string& list) {
    for (Node& element : array.As<Node::Array>())
        if (!convert(element, list)) return false;
    return true;
}

// Walks an object's members with the keyed walker; false at the first that
// fails.
bool WalkMembers(Node& object, AttrSet& members) {
    for (auto& member : object.As<Node::Object>())
        if (!convert(member.key.c_str(), member.value, members)) return false;
    return true;
}

// The list text of an array: its elements' texts joined by '+'.
bool convert(Node& src, std::string& list, ListText) {
    TAVRIN_LOG_ERROR();
    if (!WalkElements(src, list)) {
        TAVRIN_LOG_ERROR("!src.Foreach(func)");
        return false;
    }
    if (!list.empty()) list.pop_back();
    TAVRIN_LOG_INFO(list);
    return true;
}

// The text of the set holding an object's members, each under its own key.
bool convert(Node& src, std::string& text, SetText) {
    AttrSet members;
    if (!WalkMembers(src, members)) {
        TAVRIN_LOG_ERROR("!src.Foreach(func)");
        return false;
    }
    text = members.ToString(false);
    TAVRIN_LOG_INFO(text);
    return true;
}

// List walker: appends the element text of `src` and one '+' to `out`; on
// failure `out` is unchanged.
bool convert(Node& src, std::string& out) {
    const Kind kind = KindOf(src);
    std::string text;
    if (kind == Kind::String) {
        text = Braced(src.As<std::string>());
    } else if (kind == Kind::Int64 || kind == Kind::Bool) {
        text = ScalarText(src, kind);
    } else if (kind == Kind::Array || kind == Kind::Object) {
        const bool done = kind == Kind::Array ? convert(src, text, ListText{})
                                              : convert(src, text, SetText{});
        if (!done) return false;
        text = Braced(text);
    } else {
        TAVRIN_LOG_ERROR();
    }
    out += text;
    out += '+';
    return true;
}

// Keyed walker: stores the value text of `src` in `ap` under `key`; on
// failure nothing is stored.
bool convert(const char* key, Node& src, AttrSet& ap) {
    const Kind kind = KindOf(src);
    if (kind == Kind::String || kind == Kind::Int64 || kind == Kind::Bool) {
        ap.Add(key, ScalarText(src, kind).c_str());
    } else if (kind == Kind::Array || kind == Kind::Object) {
        std::string text;
        const bool done = kind == Kind::Array ? convert(src, text, ListText{})
                                              : convert(src, text, SetText{});
        if (!done) return false;
        if (kind == Kind::Array && !text.empty() && text.front() == '{') text = Braced(text);
        ap.Add(key, text.c_str());
        TAVRIN_LOG_INFO(ap.Get(key));
    } else {
        TAVRIN_LOG_ERROR();
    }
    return true;
}

}  // namespace

bool convertJsonToAttrSetString(const char* src, std::string* out) {
    if (src == nullptr || out == nullptr) {
        TAVRIN_LOG_ERROR(src == nullptr ? "!src" : "!out");
        return false;
    }
    TAVRIN_LOG_INFO("src=", src);
    Node node;
    if (!node.Deserialize(src)) {
        TAVRIN_LOG_ERROR("!node.Deserialize(src)");
        return false;
    }
    TAVRIN_LOG_INFO();
    AttrSet ap;
    if (!convert("root", node, ap)) {
        TAVRIN_LOG_ERROR("!convert(\"root\",node,ap)");
        return false;
    }
    TAVRIN_LOG_INFO();
    const char* root = ap.Value(0);
    *out = root != nullptr ? root : "";
    return true;
}

bool cmdConvertJsonToAttrSetString(AttrSet& ap) {
    const char* src = ap.Get("p0");
    if (src == nullptr) {
        TAVRIN_LOG_ERROR("!src");
        return false;
    }
    const char* address = ap.Get("p1");
    if (address == nullptr) {
        TAVRIN_LOG_ERROR("!ap.Get(\"p1\",out)");
        return false;
    }
    const unsigned long out = std::strtoul(address, nullptr, 16);
    if (out == 0) {
        TAVRIN_LOG_ERROR("!out");
        return false;
    }
    return convertJsonToAttrSetString(src, reinterpret_cast<std::string*>(static_cast<std::uintptr_t>(out)));
}

}  // namespace tavrin::plugin::json
