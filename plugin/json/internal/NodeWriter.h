#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include <cstddef>
#include <string>
#include <vector>

#include "json/JsonNode.h"

namespace tavrin::plugin::json {

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
    struct Open {
        const Node::Array* items;
        const Node::Object* members;
        std::size_t next;
    };

    std::string& _out;
    std::vector<Open> _open;
};

}  // namespace tavrin::plugin::json
