#include "json/internal/NodeWriter.h"

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

}  // namespace

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

}  // namespace tavrin::plugin::json
