#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <typeinfo>
#include <vector>

#include "base/Log.h"
#include "json/JsonNode.h"
#include "json/NodeMessages.h"
#include "json/internal/HeapAhead.h"
#include "json/internal/NodeAccess.h"
#include "json/internal/NumberText.h"

namespace tavrin::plugin::json {

namespace {

using detail::ValueOf;

// Text appended to a string through a pointer into its own storage, which
// grows by doubling: no call and no check of the string's own per piece.
// The string has its final size once the sink is gone.
class TextSink {
public:
    explicit TextSink(std::string& out) : _out(out), _size(out.size()) {}
    ~TextSink() { _out.resize(_size); }
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;

    // Room for `count` more characters; Commit says how many were used.
    char* Room(std::size_t count) {
        if (_out.size() - _size < count) _out.resize(std::max(2 * _out.size(), _size + count) + 64);
        return &_out[_size];
    }
    void Commit(const char* end) { _size = static_cast<std::size_t>(end - _out.data()); }

    void Put(char c) { *Room(1) = c; ++_size; }
    void Put(const char* text, std::size_t length) {
        std::memcpy(Room(length), text, length);
        _size += length;
    }
    template <std::size_t N>
    void Put(const char (&text)[N]) { Put(text, N - 1); }
    // A stored text up to its first NUL, unescaped, as the text form keeps
    // it.
    void PutText(const std::string& text) { Put(text.data(), std::min(text.size(), text.find('\0'))); }

    void PutInteger(long long value) { Commit(WriteInteger(Room(kNumberTextMax), value)); }
    void PutDouble(double value) { Commit(WriteDouble(Room(kNumberTextMax), value)); }

private:
    std::string& _out;
    std::size_t _size;
};

// Writes the compact text of a node tree into one string, depth first, with a
// stack of the containers still open instead of recursion. The caller hands
// each node that Next returns to Write (or, for an empty node, writes nothing
// and reports it), starting with the root.
class NodeWriter {
public:
    explicit NodeWriter(std::string& out) : _out(out) {}

    // Appends a value's text; a container gets its opening bracket, and its
    // elements come from the following calls of Next. A node of no known
    // kind writes nothing.
    void Write(const Node& node);

    // The next node to write, after the punctuation that goes before it and
    // the closing brackets of the containers finished on the way; null when
    // the whole tree is written.
    const Node* Next();

private:
    template <class... Kinds>
    void WriteIf(const Node& node);
    template <class... Kinds, class Before>
    bool WriteByRecord(const Node& node, Before before);
    template <class T>
    bool WriteAs(const Node& node);
    void WriteValue(bool flag);
    void WriteValue(long long integer);
    void WriteValue(double real);
    void WriteValue(const tavrin::base::Fraction& fraction);
    void WriteValue(const std::string& text);
    void WriteValue(const Node::Object& members);
    void WriteValue(const Node::Array& items);

    struct Open {
        const Node::Array* items;
        const Node::Object* members;
        std::size_t next;
    };

    TextSink _out;
    std::vector<Open> _open;
};

void NodeWriter::Write(const Node& node) {
    WriteIf<double, long long, std::string, bool, tavrin::base::Fraction, Node::Object, Node::Array>(
        node);
}

// Nodes made in this library carry these very type records, so comparing
// the records' addresses settles most nodes at once; the others are told
// apart by type_info equality.
template <class... Kinds>
void NodeWriter::WriteIf(const Node& node) {
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

const Node* NodeWriter::Next() {
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

}  // namespace

std::string Node::Serialize() {
    std::string out;
    {
        NodeWriter writer(out);
        for (const Node* next = this; next != nullptr; next = writer.Next()) {
            if (next->IsEmpty())
                TAVRIN_LOG_ERROR(messages::node::kEmptyNode);
            else
                writer.Write(*next);
        }
    }
    return out;
}

}  // namespace tavrin::plugin::json
