#pragma once

#include <cstddef>
#include <string_view>

namespace json {

// Character classes of the reader, the same in every locale.
inline bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// ASCII comparison without regard to letter case.
inline bool EqualsFolded(std::string_view text, std::string_view word) {
    if (text.size() != word.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
        if (c != word[i]) return false;
    }
    return true;
}

}  // namespace json
