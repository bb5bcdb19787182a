#pragma once

#include <cstddef>
#include <string>

namespace tavrin::test {

// Arrays nested `depth` deep around `core`: [[...core...]].
std::string NestedArrays(std::size_t depth, const std::string& core = "");

// Objects nested `depth` deep, each holding the next under the key "k", with
// `core` as the innermost value: {"k":{"k":...core...}}.
std::string NestedObjects(std::size_t depth, const std::string& core = "1");

// Arrays and objects taking turns, `depth` containers in all, the outermost
// an array, with `core` as the innermost value: [{"k":[{"k":...core...}]}].
std::string AlternatingNesting(std::size_t depth, const std::string& core = "1");

}  // namespace tavrin::test
