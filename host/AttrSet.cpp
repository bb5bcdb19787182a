#include "base/AttrSet.h"

#include <cstdlib>

namespace tavrin::base {

namespace {

// A text's braces "pair up" when, read left to right, no "}" closes more
// than was opened and every "{" is closed by the end.
bool BracesPairUp(const std::string& text) {
    long depth = 0;
    for (char c : text) {
        if (c == '{') ++depth;
        if (c == '}' && --depth < 0) return false;
    }
    return depth == 0;
}

void AppendEscaped(std::string& out, char c) {
    static const char kHex[] = "0123456789ABCDEF";
    out += '%';
    out += kHex[static_cast<unsigned char>(c) >> 4];
    out += kHex[static_cast<unsigned char>(c) & 0xF];
}

// Writes one key or value text. At the text's outermost level (outside any
// brace pair it keeps) "%", ",", "=" are escaped; braces are kept when they
// pair up and escaped otherwise. Inside kept braces nothing is escaped.
// Characters written as they are go out in runs, one append per run.
void AppendText(std::string& out, const std::string& text) {
    const bool keepBraces = BracesPairUp(text);
    long depth = 0;
    std::size_t run = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool brace = c == '{' || c == '}';
        if (brace && keepBraces) {
            depth += c == '{' ? 1 : -1;
        } else if (depth == 0 && (brace || c == '%' || c == ',' || c == '=')) {
            out.append(text, run, i - run);
            AppendEscaped(out, c);
            run = i + 1;
        }
    }
    out.append(text, run, std::string::npos);
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// Reads one text up to a delimiter at the outermost level: "=" ends a key,
// "," or "}" ends a value. Brace groups are copied whole; "%XX" is decoded at
// the outermost level only. Leaves `p` on the delimiter (or the end).
std::string ReadText(const char*& p, bool isKey) {
    std::string text;
    long depth = 0;
    for (; *p != '\0'; ++p) {
        const char c = *p;
        if (depth == 0) {
            if (c == '}' || c == ',' || (isKey && c == '=')) break;
            if (c == '%' && HexDigit(p[1]) >= 0 && HexDigit(p[2]) >= 0) {
                text += static_cast<char>(HexDigit(p[1]) * 16 + HexDigit(p[2]));
                p += 2;
                continue;
            }
        }
        if (c == '{') ++depth;
        if (c == '}') --depth;
        text += c;
    }
    return text;
}

}  // namespace

AttrSet::AttrSet() = default;
AttrSet::AttrSet(const AttrSet&) = default;
AttrSet& AttrSet::operator=(const AttrSet&) = default;
AttrSet::~AttrSet() = default;

AttrSet::AttrSet(const char* text) {
    if (text == nullptr || *text != '{') return;
    const char* p = text + 1;
    while (*p != '\0' && *p != '}') {
        std::string key = ReadText(p, true);
        if (*p != '=') return;  // a key without "=" ends the readable part
        ++p;
        std::string value = ReadText(p, false);
        Add(key.c_str(), value.c_str());
        if (*p == ',') ++p;
    }
}

bool AttrSet::Add(const char* key, const char* value) {
    if (key == nullptr) return false;
    const char* text = value != nullptr ? value : "";
    auto found = _index.find(key);
    if (found != _index.end()) {
        _entries[found->second].second = text;
        return true;
    }
    _index.emplace(key, _entries.size());
    _entries.emplace_back(key, text);
    return true;
}

const char* AttrSet::Get(const char* key) const {
    if (key == nullptr) return nullptr;
    auto found = _index.find(key);
    return found == _index.end() ? nullptr : _entries[found->second].second.c_str();
}

const char* AttrSet::Value(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= _entries.size()) return nullptr;
    return _entries[static_cast<std::size_t>(index)].second.c_str();
}

const char* AttrSet::Key(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= _entries.size()) return nullptr;
    return _entries[static_cast<std::size_t>(index)].first.c_str();
}

std::size_t AttrSet::Size() const { return _entries.size(); }

std::string AttrSet::ToString(bool pretty) const {
    std::string out = "{";
    for (std::size_t i = 0; i < _entries.size(); ++i) {
        if (i != 0) {
            out += ',';
            if (pretty) out += '\n';
        }
        AppendText(out, _entries[i].first);
        out += '=';
        AppendText(out, _entries[i].second);
    }
    out += '}';
    return out;
}

}  // namespace tavrin::base
