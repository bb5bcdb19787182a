// JSON to attribute-set text: a walk over a parsed Node tree and the two
// functions the plug-in registers with the host.
#include "json/internal/JsonConvert.h"

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <optional>
#include <string>

#include "base/Log.h"
#include "base/ToString.h"
#include "json/JsonNode.h"
#include "json/internal/ConvertMessages.h"

namespace tavrin::plugin::json {

using tavrin::base::AttrSet;
namespace msg = messages::convert;

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

// Where a converted node's text goes: under `key` in `set`, or, when `set`
// is null, appended to `list` as one element followed by '+'.
struct Place {
    AttrSet* set;
    const char* key;
    std::string* list;
};

// An array or object whose children are being converted: the text or set
// they fill, how many have been visited, and where its own text goes.
struct Level {
    Level(Node& node, Kind kind, Place place) : node(node), kind(kind), place(place) {
        if (kind == Kind::Object) members.emplace();
    }
    Node& node;
    Kind kind;
    Place place;
    std::size_t next = 0;
    std::string list;
    std::optional<AttrSet> members;
};

// The levels still open, innermost last. A deque keeps every level where it
// is while deeper ones come and go, so the places pointing into them stay
// valid.
using OpenLevels = std::deque<Level>;

// Stores or appends `text` at `place`.
void Put(const Place& place, const std::string& text) {
    if (place.set != nullptr) {
        place.set->Add(place.key, text.c_str());
        return;
    }
    *place.list += text;
    *place.list += '+';
}

// Meets one node: a scalar goes to `place` at once, an array or object
// opens a level whose children are visited next; any other value has no
// text, is marked by a red line and leaves an empty element in a list.
void convert(Node& src, const Place& place, OpenLevels& open) {
    const Kind kind = KindOf(src);
    if (kind == Kind::String || kind == Kind::Int64 || kind == Kind::Bool) {
        const std::string text = ScalarText(src, kind);
        Put(place, kind == Kind::String && place.set == nullptr ? Braced(text) : text);
    } else if (kind == Kind::Array || kind == Kind::Object) {
        if (kind == Kind::Array) TAVRIN_LOG_ERROR();
        open.emplace_back(src, kind, place);
    } else {
        TAVRIN_LOG_ERROR();
        if (place.set == nullptr) Put(place, std::string());
    }
}

// Puts the text of an array whose elements have all been visited: the
// elements joined by '+', braced inside a list or when it begins with '{'.
void convert(std::string& list, const Place& place) {
    if (!list.empty()) list.pop_back();
    TAVRIN_LOG_INFO(list);
    const bool braced = place.set == nullptr || (!list.empty() && list.front() == '{');
    Put(place, braced ? Braced(list) : list);
}

// Puts the text of an object whose members have all been visited: the text
// of its member set, braced inside a list.
void convert(const AttrSet& members, const Place& place) {
    const std::string text = members.ToString(false);
    TAVRIN_LOG_INFO(text);
    Put(place, place.set != nullptr ? text : Braced(text));
}

// Logs the value just stored under `key`, as the set now holds it.
void convert(const AttrSet& ap, const char* key) {
    TAVRIN_LOG_INFO(ap.Get(key));
}

// Visits the next child of `level`, or puts its text and closes it when all
// have been visited.
void convert(OpenLevels& open) {
    Level& level = open.back();
    if (level.kind == Kind::Array) {
        auto& elements = level.node.As<Node::Array>();
        if (level.next < elements.size()) {
            convert(elements[level.next++], Place{nullptr, nullptr, &level.list}, open);
            return;
        }
        convert(level.list, level.place);
    } else {
        auto& members = level.node.As<Node::Object>();
        if (level.next < members.size()) {
            auto& member = members[level.next++];
            convert(member.value, Place{&*level.members, member.key.c_str(), nullptr}, open);
            return;
        }
        convert(*level.members, level.place);
    }
    if (level.place.set != nullptr) convert(*level.place.set, level.place.key);
    open.pop_back();
}

// Stores the text of `src` in `ap` under `key`. The nesting of the document
// is followed with a list of open levels on the heap rather than by
// recursion, so any depth converts on a small thread stack. Every node has a
// text or is skipped, so the walk cannot fail.
void convert(const char* key, Node& src, AttrSet& ap) {
    OpenLevels open;
    convert(src, Place{&ap, key, nullptr}, open);
    while (!open.empty()) convert(open);
}

}  // namespace

bool convertJsonToAttrSetString(const char* src, std::string* out) {
    if (src == nullptr || out == nullptr) {
        TAVRIN_LOG_ERROR(src == nullptr ? msg::kNoSource : msg::kNoOutput);
        return false;
    }
    TAVRIN_LOG_INFO(msg::kSource, src);
    Node node;
    if (!node.Deserialize(src)) {
        TAVRIN_LOG_ERROR(msg::kNotParsed);
        return false;
    }
    TAVRIN_LOG_INFO();
    AttrSet ap;
    convert("root", node, ap);
    TAVRIN_LOG_INFO();
    const char* root = ap.Value(0);
    *out = root != nullptr ? root : "";
    return true;
}

bool cmdConvertJsonToAttrSetString(AttrSet& ap) {
    const char* src = ap.Get("p0");
    if (src == nullptr) {
        TAVRIN_LOG_ERROR(msg::kNoSource);
        return false;
    }
    const char* address = ap.Get("p1");
    if (address == nullptr) {
        TAVRIN_LOG_ERROR(msg::kNoOutputArgument);
        return false;
    }
    const unsigned long out = std::strtoul(address, nullptr, 16);
    if (out == 0) {
        TAVRIN_LOG_ERROR(msg::kNoOutput);
        return false;
    }
    return convertJsonToAttrSetString(src, reinterpret_cast<std::string*>(static_cast<std::uintptr_t>(out)));
}

}  // namespace tavrin::plugin::json
