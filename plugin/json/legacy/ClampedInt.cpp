#include "json/legacy/internal/ClampedInt.h"

#include <cstdint>
#include <limits>

#include "json/legacy/internal/TextClass.h"

namespace json {

bool ReadClampedInt(std::string_view token, int& out) {
    out = 0;
    if (token.empty()) return true;
    std::size_t i = 0;
    const bool negative = token[0] == '-';
    if (token[0] == '-' || token[0] == '+') ++i;
    if (i == token.size()) return false;
    // Past this magnitude every longer number clamps the same way.
    constexpr std::int64_t kCap = std::int64_t{1} << 32;
    std::int64_t magnitude = 0;
    for (; i < token.size(); ++i) {
        if (!IsDigit(token[i])) return false;
        if (magnitude < kCap) magnitude = magnitude * 10 + (token[i] - '0');
    }
    const std::int64_t value = negative ? -magnitude : magnitude;
    if (value < std::numeric_limits<std::int32_t>::min())
        out = std::numeric_limits<std::int32_t>::min();
    else if (value > std::numeric_limits<std::int32_t>::max())
        out = std::numeric_limits<std::int32_t>::max();
    else
        out = static_cast<int>(value);
    return true;
}

}  // namespace json
