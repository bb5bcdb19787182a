#include "json/internal/NumberText.h"

#include <algorithm>
#include <cmath>

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
    const bool marked =
        std::find_if(text, result.ptr, [](char c) { return c == '.' || c == 'e'; }) != result.ptr;
    out.append(text, static_cast<std::size_t>(result.ptr - text));
    if (!marked) out += ".0";
}

}  // namespace tavrin::plugin::json
