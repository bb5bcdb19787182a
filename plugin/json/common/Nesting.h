#pragma once
// Private to the plug-in's sources (not installed): shared by both readers.

namespace tavrin::plugin::json::common {

// Arrays and objects nested deeper than this fail to read, in both readers.
// The bound keeps reading, and copying, assigning, destroying and writing the
// deepest admitted tree, well inside a 256 KiB thread stack.
inline constexpr int kMaxNesting = 256;

}  // namespace tavrin::plugin::json::common
