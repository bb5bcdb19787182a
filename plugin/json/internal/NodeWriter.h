#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// The writer of a node tree's compact text. Node::Serialize drives it and
// reports the empty nodes it meets, so that its log lines are the node's own.

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "json/internal/NumberText.h"

namespace tavrin::plugin::json::detail {

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
// stack of the containers still open instead of recursion. An empty node
// writes nothing: the writer stops there, for the caller to report it, and
// goes on from there when called again.
class NodeWriter {
public:
    NodeWriter(const Node& root, std::string& out) : _out(out), _root(root) {}

    // Writes the tree from where the last call stopped (the root at first)
    // up to the next empty node: true when it met one, false when the whole
    // tree is written.
    bool WriteToNextEmpty();

private:
    // The inline ones are made part of WriteToNextEmpty's loop, where the
    // whole writing happens.
    template <class... Kinds>
    inline void WriteIf(const Node& node);
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

    // Appends a value's text; a container gets its opening bracket, and its
    // elements come from the following calls of Next. A node of no known
    // kind writes nothing.
    inline void Write(const Node& node);
    // The next node to write, after the punctuation that goes before it and
    // the closing brackets of the containers finished on the way; null when
    // the whole tree is written.
    inline const Node* Next();

    struct Open {
        const Node::Array* items;
        const Node::Object* members;
        std::size_t next;
    };

    TextSink _out;
    std::vector<Open> _open;
    const Node& _root;
    bool _stoppedAtEmpty = false;
};

}  // namespace tavrin::plugin::json::detail
