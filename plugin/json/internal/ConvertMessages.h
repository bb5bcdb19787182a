#pragma once

// Every text the conversion functions write in their log lines. The walk's
// own lines carry no text of their own: a red line with no message marks an
// array, or a value that has no text; cyan lines show a converted text.
namespace tavrin::plugin::json::messages::convert {

// Red lines: the condition that failed.
inline constexpr char kNoSource[] = "!src";
inline constexpr char kNoOutput[] = "!out";
inline constexpr char kNotParsed[] = "!node.Deserialize(src)";
inline constexpr char kNoOutputArgument[] = "!ap.Get(\"p1\",out)";

// Cyan line: this, then the JSON text being converted.
inline constexpr char kSource[] = "src=";

}  // namespace tavrin::plugin::json::messages::convert
