#include <cstddef>
#include <string>
#include <vector>

#include "base/Log.h"
#include "json/JsonNode.h"
#include "json/NodeMessages.h"
#include "json/internal/NodeAccess.h"
#include "json/internal/NumberText.h"

namespace tavrin::plugin::json {

namespace {

using detail::ValueOf;

// Appends a stored text up to its first NUL, unescaped, as the text form keeps
// it.
void AppendText(std::string& out, const std::string& text) {
    out.append(text, 0, text.find('\0'));
}

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

void NodeWriter::Write(const Node& node) {
    if (const bool* flag = ValueOf<bool>(node)) {
        _out += *flag ? "true" : "false";
    } else if (const long long* integer = ValueOf<long long>(node)) {
        AppendInteger(_out, *integer);
    } else if (const double* real = ValueOf<double>(node)) {
        AppendDouble(_out, *real);
    } else if (const auto* fraction = ValueOf<tavrin::base::Fraction>(node)) {
        AppendInteger(_out, static_cast<int>(fraction->num));
        _out += '/';
        AppendInteger(_out, static_cast<int>(fraction->den));
    } else if (const std::string* text = ValueOf<std::string>(node)) {
        _out += '"';
        AppendText(_out, *text);
        _out += '"';
    } else if (const Node::Object* members = ValueOf<Node::Object>(node)) {
        _out += '{';
        _open.push_back({nullptr, members, 0});
    } else if (const Node::Array* items = ValueOf<Node::Array>(node)) {
        _out += '[';
        _open.push_back({items, nullptr, 0});
    }
}

const Node* NodeWriter::Next() {
    while (!_open.empty()) {
        Open& top = _open.back();
        if (top.items != nullptr) {
            if (top.next < top.items->size()) {
                if (top.next != 0) _out += ',';
                return &(*top.items)[top.next++];
            }
            _out += ']';
        } else {
            if (top.next < top.members->size()) {
                const auto& member = (*top.members)[top.next];
                _out += top.next++ == 0 ? "\"" : ",\"";
                AppendText(_out, member.key);
                _out += "\":";
                return &member.value;
            }
            _out += '}';
        }
        _open.pop_back();
    }
    return nullptr;
}

}  // namespace

std::string Node::Serialize() {
    std::string out;
    NodeWriter writer(out);
    for (const Node* next = this; next != nullptr; next = writer.Next()) {
        if (next->IsEmpty())
            TAVRIN_LOG_ERROR(messages::node::kEmptyNode);
        else
            writer.Write(*next);
    }
    return out;
}

}  // namespace tavrin::plugin::json
