#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "base/Export.h"
#include "base/Fraction.h"
#include "base/HashTable.h"
#include "json/NodeMessages.h"

namespace tavrin::plugin::json {

class Node;

// The seven value types a Node can hold.
template <class T>
inline constexpr bool kIsNodeValue =
    std::is_same_v<T, bool> || std::is_same_v<T, long long> || std::is_same_v<T, double> ||
    std::is_same_v<T, tavrin::base::Fraction> || std::is_same_v<T, std::string> ||
    std::is_same_v<T, tavrin::base::HashTable<std::string, Node>> ||
    std::is_same_v<T, std::vector<Node>>;

// One JSON value of one of seven kinds ("bool", "int64", "double",
// "Fraction", "string", "Object", "Array"), held in one heap buffer behind a
// type record and three handlers for that type. A Node owns its value and
// through it its whole subtree; copies are deep. A Node with no buffer is
// empty. Errors are reported by a red log line and a failure result; nothing
// is thrown except where stated.
class TAVRIN_PLUGIN_API Node {
public:
    using Object = tavrin::base::HashTable<std::string, Node>;
    using Array = std::vector<Node>;

    const std::type_info* _type;
    void* _buf;
    std::function<void(Node*)> _destroy;
    std::function<void(Node*)> _create;
    std::function<void(Node*, void*)> _copy;

    // An empty node: no type record, no buffer, no handlers.
    Node();
    // A deep copy. Throws std::runtime_error("copy():ptr can't be nullptr!")
    // when `other` has a type but its value was taken away.
    Node(const Node& other);
    // Takes the value of *other; *other keeps its type record and handlers but
    // becomes empty.
    explicit Node(Node* other);
    // Moves the value; `other` is left with no type record, no buffer and no
    // handlers.
    Node(Node&& other) noexcept;
    // A node holding a copy of `value`, one of the seven value types.
    template <class T, class = std::enable_if_t<kIsNodeValue<T>>>
    Node(const T& value) : _type(nullptr), _buf(nullptr) {  // NOLINT: implicit by design
        Init<T>(const_cast<T*>(&value));
    }

    // Replaces this node's value by a deep copy of `other`'s (self-assignment
    // does nothing). The copy is made first, so `other` may lie inside this
    // node's tree. When copying throws, this node is left empty, of `other`'s
    // kind.
    Node& operator=(const Node& other);
    Node& operator=(Node&& other) noexcept;
    ~Node();

    // Installs kind T: the type record, the three handlers, and a copy of
    // *value (or T's default value when null). A value the node held before
    // is freed afterwards, so `value` may point into it.
    template <class T>
    void Init(T* value);

    // Allocates a copy of the T at `src` as node's buffer. Throws
    // std::runtime_error("copy():ptr can't be nullptr!") when either is null.
    template <class T>
    void copy(Node* node, void* src);

    // The value as T. On a kind mismatch or a missing buffer it prints its
    // diagnostics with printf and then throws std::bad_cast.
    template <class T>
    T& As();

    // True when the node holds (or held, if taken from) a value of type T,
    // by std::type_info equality. Equal records have names that begin with
    // the same letter, so comparing that letter first settles most
    // mismatches without a string comparison.
    template <class T>
    bool Is() const {
        return _type != nullptr &&
               (_type == &typeid(T) ||
                (_type->name()[0] == typeid(T).name()[0] && *_type == typeid(T)));
    }

    // The kind name; an empty text (and a red log line) for a node of no kind.
    const char* Type() const;
    bool IsEmpty() const { return _buf == nullptr; }

    // Frees the value and leaves the node with no type record, no buffer and
    // no handlers, exactly like Node(): it reports no kind afterwards.
    void Clear();

    // Container operations. Wrong kinds, bad indexes and missing keys are
    // reported by a red log line and the failure result. A node whose value
    // was taken away counts as not being of its container kind.
    //
    // operator[](int) on an index out of range logs "over range" and returns
    // this node itself, as it does on a node that is not an Array.
    Node& operator[](int index);
    // The member for `key`, appended as an empty node when absent; a null key
    // is taken as the empty key.
    Node& operator[](const char* key);
    // Appends a copy of `node` to an Array.
    bool Insert(const Node& node);
    // Adds a copy of `node` to an Object under `key`. When a member matches
    // `key` already, its value becomes an Array of two elements: the previous
    // value, then the copy.
    bool Insert(const std::string& key, const Node& node);
    // Sets the member for `key` (appended when absent) to a copy of `node`.
    bool AddOrChange(const std::string& key, const Node& node);
    bool Remove(int index);
    bool Remove(const std::string& key);
    bool HasKey(const std::string& key);
    std::size_t Size() const;
    // Visits the elements (members) in order until `func` returns false.
    // An empty `func` throws std::bad_function_call at the first element.
    bool Foreach(const std::function<bool(Node&)>& func);
    bool Foreach(const std::function<bool(const char*, Node&)>& func);

    // Compact text of the node and its subtree; empty for an empty node.
    // Doubles are written in their shortest exact form, always with a "." or
    // an exponent; infinities as 1e999 and -1e999, NaN as 0.0.
    std::string Serialize();

    // Parses a document (an object or an array at the top). On success this
    // node holds the tree and true is returned; on failure the node is
    // unchanged, the parser has logged why, and false is returned.
    bool Deserialize(const char* text);
    bool Deserialize(std::string text);

private:
    // Frees the value, leaving type record and handlers; the node is empty.
    // Nested containers are freed one after another, not by recursion.
    void Release() noexcept;
    // Gives `node` a deep copy of a container as its buffer, level by level
    // rather than by recursion, so that deep trees copy on a small stack.
    static void CopyContainer(Node* node, const Array& src);
    static void CopyContainer(Node* node, const Object& src);
};

template <class T>
void Node::copy(Node* node, void* src) {
    if (node == nullptr || src == nullptr) throw std::runtime_error(messages::node::kCopyNoValue);
    if constexpr (std::is_same_v<T, Array> || std::is_same_v<T, Object>)
        CopyContainer(node, *static_cast<const T*>(src));
    else
        node->_buf = new T(*static_cast<const T*>(src));
}

template <class T>
void Node::Init(T* value) {
    static_assert(kIsNodeValue<T>, "Node holds only its seven value types");
    if (_buf != nullptr) {
        // The old value is freed last: `value` may point into it.
        Node previous(std::move(*this));
        Init(value);
        return;
    }
    _type = &typeid(T);
    std::function<void(Node*)> destroy = [](Node* n) { delete static_cast<T*>(n->_buf); };
    std::function<void(Node*)> create = [](Node* n) { n->_buf = new T(); };
    std::function<void(Node*, void*)> copier = [](Node* n, void* src) { n->copy<T>(n, src); };
    _destroy.swap(destroy);
    _create.swap(create);
    _copy.swap(copier);
    if (value != nullptr)
        _copy(this, value);
    else
        _create(this);
}

template <class T>
T& Node::As() {
    if (!Is<T>()) std::printf(messages::node::kAsWrongKind, "As", __LINE__, Type());
    if (_buf != nullptr && Is<T>()) return *static_cast<T*>(_buf);
    if (_buf == nullptr) std::printf(messages::node::kAsNoValue, "As", __LINE__);
    throw std::bad_cast();
}

}  // namespace tavrin::plugin::json
