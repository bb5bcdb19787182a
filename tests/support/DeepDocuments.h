#pragma once

#include <cstddef>
#include <string>

namespace tavrin::test {

// Arrays nested `depth` deep around `core`: [[...core...]].
inline std::string NestedArrays(std::size_t depth, const std::string& core = "") {
    return std::string(depth, '[') + core + std::string(depth, ']');
}

// Containers nested `depth` deep around `core`, the objects holding the next
// level under the key "k": objects only ({"k":{"k":...core...}}), or arrays
// and objects taking turns, the outermost an array ([{"k":[...core...]}]).
inline std::string NestedObjects(std::size_t depth, const std::string& core = "1", bool alternating = false) {
    std::string open, close;
    open.reserve(depth * 5);
    for (std::size_t i = 0; i < depth; ++i) {
        const bool array = alternating && i % 2 == 0;
        open += array ? "[" : "{\"k\":";
        close += array ? ']' : '}';
    }
    return open + core + std::string(close.rbegin(), close.rend());
}
inline std::string AlternatingNesting(std::size_t depth, const std::string& core = "1") {
    return NestedObjects(depth, core, true);
}

}  // namespace tavrin::test
