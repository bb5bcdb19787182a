#pragma once

namespace tavrin::plugin::json {

// Fixed character classes of the text parser, independent of the process
// locale. Each takes a character code 0-255 as GetNextChar returns it.

// Blank, tab, line feed and carriage return; nothing else is whitespace.
constexpr bool IsSpace(int c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

constexpr bool IsDigit(int c) { return c >= '0' && c <= '9'; }

constexpr bool IsHexDigit(int c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Codes 0 to 31 and 127.
constexpr bool IsControl(int c) { return (c >= 0 && c < 32) || c == 127; }

// Characters a string takes as they are: no quote, no backslash, no control
// character (which includes the terminator).
constexpr bool IsPlainStringChar(int c) { return c != '"' && c != '\\' && !IsControl(c); }

// The letters of the escapes other than "\u": \" \\ \/ \b \f \n \r \t.
constexpr bool IsSimpleEscape(int c) {
    return c == '"' || c == '\\' || c == '/' || c == 'b' || c == 'f' || c == 'n' || c == 'r' || c == 't';
}

}  // namespace tavrin::plugin::json
