#include "json/NumberText.h"

#include <cmath>
#include <cstring>

namespace tavrin::plugin::json {

void AppendDouble(std::string& out, double value) {
    if (std::isnan(value)) {
        out += "0.0";
        return;
    }
    if (std::isinf(value)) {
        out += value < 0 ? "-1e999" : "1e999";
        return;
    }
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    out.append(text, result.ptr);
    if (std::memchr(text, '.', static_cast<std::size_t>(result.ptr - text)) == nullptr &&
        std::memchr(text, 'e', static_cast<std::size_t>(result.ptr - text)) == nullptr)
        out += ".0";
}

}  // namespace tavrin::plugin::json
