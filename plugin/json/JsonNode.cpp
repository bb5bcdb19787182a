#include "json/JsonNode.h"

#include <cstdint>
#include <string>
#include <utility>

#include "base/Log.h"
#include "json/NodeMessages.h"
#include "json/internal/NodeAccess.h"
#include "json/internal/NodeWriter.h"

namespace tavrin::plugin::json {

namespace {

using detail::KindOf;
using detail::ValueOf;
using Array = Node::Array;
using Object = Node::Object;
namespace msg = messages::node;

// The node's kind name as the last piece of a log line, asked for when the
// line reaches it: a node of no kind logs its own line there, inside this one.
auto KindWhenReached(const Node& node) {
    return tavrin::base::WhenReached([&node] { return node.Type(); });
}

// Element counts are logged as unsigned 32-bit numbers.
std::uint32_t Count(std::size_t size) { return static_cast<std::uint32_t>(size); }

// True when `index` names an element of a container of `size` elements; a
// negative index never does.
bool InRange(int index, std::size_t size) {
    return index >= 0 && static_cast<std::size_t>(index) < size;
}

// A node holding the two given nodes as an Array, in that order.
Node PairArray(Node&& first, Node&& second) {
    Node pair;
    pair.Init<Array>(nullptr);
    Array& items = *static_cast<Array*>(pair._buf);
    items.reserve(2);
    items.push_back(std::move(first));
    items.push_back(std::move(second));
    return pair;
}

}  // namespace

Node::Node() : _type(nullptr), _buf(nullptr) {}

Node::Node(const Node& other)
    : _type(other._type),
      _buf(nullptr),
      _destroy(other._destroy),
      _create(other._create),
      _copy(other._copy) {
    if (_copy) _copy(this, other._buf);
}

Node::Node(Node* other) : _type(nullptr), _buf(nullptr) {
    if (other == nullptr) return;
    _type = other->_type;
    _destroy = other->_destroy;
    _create = other->_create;
    _copy = other->_copy;
    if (!_copy) return;
    _buf = other->_buf;
    other->_buf = nullptr;
}

Node::Node(Node&& other) noexcept : _type(other._type), _buf(other._buf) {
    _destroy.swap(other._destroy);
    _create.swap(other._create);
    _copy.swap(other._copy);
    other._type = nullptr;
    other._buf = nullptr;
}

// The copy is made before the old value is freed, so `other` may live inside
// this node's own tree. When copying throws, the node ends as if the old
// value had been freed first: empty, with `other`'s kind and handlers.
Node& Node::operator=(const Node& other) {
    if (this == &other) return *this;
    try {
        Node fresh(other);
        *this = std::move(fresh);
    } catch (...) {
        *this = KindOf(other);
        throw;
    }
    return *this;
}

// `other` is detached before the old value is freed, so it may live inside
// this node's own tree.
Node& Node::operator=(Node&& other) noexcept {
    if (this == &other) return *this;
    Node taken(std::move(other));
    Release();
    _type = taken._type;
    _buf = taken._buf;
    _destroy.swap(taken._destroy);
    _create.swap(taken._create);
    _copy.swap(taken._copy);
    taken._buf = nullptr;
    taken._destroy = nullptr;
    return *this;
}

Node::~Node() { Release(); }

const char* Node::Type() const {
    if (Is<bool>()) return "bool";
    if (Is<long long>()) return "int64";
    if (Is<double>()) return "double";
    if (Is<tavrin::base::Fraction>()) return "Fraction";
    if (Is<std::string>()) return "string";
    if (Is<Object>()) return "Object";
    if (Is<Array>()) return "Array";
    TAVRIN_LOG_ERROR(msg::kUnknownKind);
    return "";
}

void Node::Clear() { *this = Node(); }

Node& Node::operator[](int index) {
    Array* items = ValueOf<Array>(*this);
    if (items == nullptr) {
        TAVRIN_LOG_ERROR(msg::kArrayRequired, msg::kThisTypeIs, KindWhenReached(*this));
        return *this;
    }
    if (InRange(index, items->size())) return (*items)[static_cast<std::size_t>(index)];
    TAVRIN_LOG_ERROR(msg::kOverRange, index, msg::kOverRangeSize, Count(items->size()), msg::kOverRangeEnd);
    return *this;
}

Node& Node::operator[](const char* key) {
    Object* members = ValueOf<Object>(*this);
    if (members == nullptr) {
        TAVRIN_LOG_ERROR(msg::kObjectRequired);
        return *this;
    }
    return (*members)[std::string(key != nullptr ? key : "")];
}

bool Node::Insert(const Node& node) {
    Array* items = ValueOf<Array>(*this);
    if (items == nullptr) {
        TAVRIN_LOG_ERROR(msg::kArrayRequired);
        return false;
    }
    Node copied(node);
    items->push_back(std::move(copied));
    return true;
}

// Under a key already present the member becomes an Array of its previous
// value and the new node; the previous value is moved, not copied, so
// repeated insertions under one key stay linear.
bool Node::Insert(const std::string& key, const Node& node) {
    Object* members = ValueOf<Object>(*this);
    if (members == nullptr) {
        TAVRIN_LOG_ERROR(msg::kObjectRequired);
        return false;
    }
    Node copied(node);
    const std::uint32_t hash = tavrin::base::Hash(key, '\0');
    auto found = members->findHash(hash);
    if (found == members->end()) {
        members->emplace_back(hash, std::string(key), std::move(copied));
        return true;
    }
    found->value = PairArray(std::move(found->value), std::move(copied));
    return true;
}

bool Node::AddOrChange(const std::string& key, const Node& node) {
    Object* members = ValueOf<Object>(*this);
    if (members == nullptr) {
        TAVRIN_LOG_ERROR(msg::kAddKey, key, msg::kAddKeyFailed);
        return false;
    }
    // The copy is made first: `node` may be a member of this object, which
    // appending would move. When copying throws, the member ends as a failed
    // assignment leaves its target, appended if it was absent.
    Node copied;
    try {
        copied = Node(node);
    } catch (...) {
        (*members)[key] = KindOf(node);
        throw;
    }
    (*members)[key] = std::move(copied);
    return true;
}

bool Node::Remove(int index) {
    Array* items = ValueOf<Array>(*this);
    if (items == nullptr) {
        TAVRIN_LOG_ERROR(msg::kArrayRequired, msg::kThisTypeIs, KindWhenReached(*this));
        return false;
    }
    if (!InRange(index, items->size())) {
        TAVRIN_LOG_ERROR(msg::kOverRange, index, msg::kOverRangeSize, Count(items->size()), msg::kOverRangeEnd);
        return false;
    }
    items->erase(items->begin() + index);
    return true;
}

bool Node::Remove(const std::string& key) {
    Object* members = ValueOf<Object>(*this);
    if (members == nullptr) {
        TAVRIN_LOG_ERROR(msg::kObjectRequired);
        return false;
    }
    auto found = members->find(key);
    if (found == members->end()) {
        TAVRIN_LOG_ERROR(msg::kRemoveKey, key, msg::kRemoveKeyMissing);
        return false;
    }
    members->erase(found);
    return true;
}

bool Node::HasKey(const std::string& key) {
    Object* members = ValueOf<Object>(*this);
    if (members == nullptr) {
        TAVRIN_LOG_ERROR(msg::kObjectRequired);
        return false;
    }
    return members->find(key) != members->end();
}

std::size_t Node::Size() const {
    if (const Array* items = ValueOf<Array>(*this)) return items->size();
    if (const Object* members = ValueOf<Object>(*this)) return members->size();
    return 0;
}

// The count is taken once at the start; the container is looked up again
// after every call, so a callback that breaks the rule and changes it ends
// the walk early instead of reading freed memory.
bool Node::Foreach(const std::function<bool(Node&)>& func) {
    const Array* items = ValueOf<Array>(*this);
    if (items == nullptr) return false;
    const std::size_t count = items->size();
    for (std::size_t i = 0; i < count; ++i) {
        Array* current = ValueOf<Array>(*this);
        if (current == nullptr || i >= current->size()) break;
        if (!func((*current)[i])) return false;
    }
    return true;
}

bool Node::Foreach(const std::function<bool(const char*, Node&)>& func) {
    const Object* members = ValueOf<Object>(*this);
    if (members == nullptr) return false;
    const std::size_t count = members->size();
    for (std::size_t i = 0; i < count; ++i) {
        Object* current = ValueOf<Object>(*this);
        if (current == nullptr || i >= current->size()) break;
        auto& member = (*current)[i];
        if (!func(member.key.c_str(), member.value)) return false;
    }
    return true;
}

// Each empty node met writes nothing and is reported here, in the order of
// the text.
std::string Node::Serialize() {
    std::string out;
    {
        detail::NodeWriter writer(*this, out);
        while (writer.WriteToNextEmpty()) TAVRIN_LOG_ERROR(msg::kEmptyNode);
    }
    return out;
}

}  // namespace tavrin::plugin::json
