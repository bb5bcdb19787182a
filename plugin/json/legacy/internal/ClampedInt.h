#pragma once

#include <string_view>

namespace json {

// Reads a whole token as strtol reads base 10 (an optional sign, then
// digits), clamping to the signed 32-bit range. The empty token gives 0.
// False when any character of the token is left over.
bool ReadClampedInt(std::string_view token, int& out);

}  // namespace json
