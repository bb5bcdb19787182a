#pragma once

#include <string>
#include <string_view>

namespace json {

// The text between a string's quotes with its escapes resolved: the escapes
// \f \/ \" \\ \b \r \n \t give their character; \u gives the byte named by
// the last two of its four hex digits (read as strtoul reads hex, 0 when
// there is no digit; a \u too close to the end reads whatever of those two
// positions exist); a backslash before any other character is dropped with
// it; a final backslash is kept.
std::string Unescape(std::string_view text);

}  // namespace json
