#include "json/legacy/internal/Unescape.h"

#include <algorithm>

#include "json/legacy/internal/TextClass.h"

namespace json {

namespace {

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// The low byte of what strtoul(text, nullptr, 16) gives for a text of at most
// two characters: blanks, a sign and hex digits.
char HexByte(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && IsSpace(text[i])) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
    unsigned long value = 0;
    for (; i < text.size() && HexDigit(text[i]) >= 0; ++i)
        value = value * 16 + static_cast<unsigned long>(HexDigit(text[i]));
    if (negative) value = 0ul - value;
    return static_cast<char>(static_cast<unsigned char>(value & 0xFFu));
}

char EscapedCharacter(char letter) {
    switch (letter) {
        case 'f': return '\f';
        case 'b': return '\b';
        case 'r': return '\r';
        case 'n': return '\n';
        case 't': return '\t';
        case '/':
        case '"':
        case '\\': return letter;
        default: return '\0';
    }
}

}  // namespace

std::string Unescape(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i++];
            continue;
        }
        const char letter = text[i + 1];
        if (letter == 'u') {
            out += HexByte(text.substr(std::min(i + 4, text.size()), 2));
            i = std::min(i + 6, text.size());
            continue;
        }
        const char resolved = EscapedCharacter(letter);
        if (resolved != '\0') out += resolved;
        i += 2;
    }
    return out;
}

}  // namespace json
