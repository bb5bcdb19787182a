#include "json/internal/NodeWriter.h"

#include <cstddef>
#include <string>
#include <typeinfo>

#include "json/JsonNode.h"
#include "json/internal/HeapAhead.h"
#include "json/internal/NodeAccess.h"

namespace tavrin::plugin::json::detail {

bool NodeWriter::WriteToNextEmpty() {
    for (const Node* node = _stoppedAtEmpty ? Next() : &_root; node != nullptr; node = Next()) {
        _stoppedAtEmpty = node->IsEmpty();
        if (_stoppedAtEmpty) return true;
        Write(*node);
    }
    return false;
}

[[gnu::always_inline]] inline void NodeWriter::Write(const Node& node) {
    WriteIf<double, long long, std::string, bool, tavrin::base::Fraction, Node::Object, Node::Array>(
        node);
}

// Nodes made in this library carry these very type records, so comparing
// the records' addresses settles most nodes at once; the others are told
// apart by type_info equality.
template <class... Kinds>
[[gnu::always_inline]] inline void NodeWriter::WriteIf(const Node& node) {
    if (!WriteByRecord<Kinds...>(node, [] {})) (void)((WriteAs<Kinds>(node)) || ...);
}

// Writes `node`, after what `before` writes, if it has the very type record
// of one of the kinds; false, with nothing written, otherwise.
template <class... Kinds, class Before>
bool NodeWriter::WriteByRecord(const Node& node, Before before) {
    return ((node._type == &typeid(Kinds) && (before(), WriteValue(*static_cast<const Kinds*>(node._buf)), true)) ||
            ...);
}

template <class T>
bool NodeWriter::WriteAs(const Node& node) {
    const T* value = ValueOf<T>(node);
    if (value != nullptr) WriteValue(*value);
    return value != nullptr;
}

void NodeWriter::WriteValue(bool flag) {
    if (flag)
        _out.Put("true");
    else
        _out.Put("false");
}

void NodeWriter::WriteValue(long long integer) { _out.PutInteger(integer); }
void NodeWriter::WriteValue(double real) { _out.PutDouble(real); }

void NodeWriter::WriteValue(const tavrin::base::Fraction& fraction) {
    _out.PutInteger(fraction.num);
    _out.Put('/');
    _out.PutInteger(fraction.den);
}

void NodeWriter::WriteValue(const std::string& text) {
    _out.Put('"');
    _out.PutText(text);
    _out.Put('"');
}

void NodeWriter::WriteValue(const Node::Object& members) {
    _out.Put('{');
    _open.push_back({nullptr, &members, 0});
}

// The leading items whose values have no parts are written at once, without
// opening the array; it stays open from the first other item on, if any, and
// Next goes on from there.
void NodeWriter::WriteValue(const Node::Array& items) {
    // The blocks of the items and of the containers after them, which the
    // reader allocated, and the writer reads, in this order. Far ahead and
    // many lines: when other work competes for memory, fewer or nearer lines
    // leave the writer waiting on arrays of pairs.
    detail::PrefetchFrom<12288, 16, detail::Use::kRead>(items.data());
    _out.Put('[');
    std::size_t next = 0;
    const auto comma = [&] {
        if (next != 0) _out.Put(',');
    };
    while (next < items.size() && items[next]._buf != nullptr &&
           WriteByRecord<double, long long, std::string, bool, tavrin::base::Fraction>(items[next], comma))
        ++next;
    if (next == items.size())
        _out.Put(']');
    else
        _open.push_back({&items, nullptr, next});
}

[[gnu::always_inline]] inline const Node* NodeWriter::Next() {
    while (!_open.empty()) {
        Open& top = _open.back();
        if (top.items != nullptr) {
            if (top.next < top.items->size()) {
                if (top.next != 0) _out.Put(',');
                return &(*top.items)[top.next++];
            }
            _out.Put(']');
        } else {
            if (top.next < top.members->size()) {
                const auto& member = (*top.members)[top.next];
                if (top.next++ != 0) _out.Put(',');
                _out.Put('"');
                _out.PutText(member.key);
                _out.Put("\":");
                return &member.value;
            }
            _out.Put('}');
        }
        _open.pop_back();
    }
    return nullptr;
}

}  // namespace tavrin::plugin::json::detail
