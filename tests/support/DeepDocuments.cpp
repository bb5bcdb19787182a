#include "support/DeepDocuments.h"

namespace tavrin::test {

std::string NestedArrays(std::size_t depth, const std::string& core) {
    return std::string(depth, '[') + core + std::string(depth, ']');
}

std::string NestedObjects(std::size_t depth, const std::string& core) {
    std::string text;
    text.reserve(depth * 6 + core.size());
    for (std::size_t i = 0; i < depth; ++i) text += "{\"k\":";
    text += core;
    text.append(depth, '}');
    return text;
}

std::string AlternatingNesting(std::size_t depth, const std::string& core) {
    std::string open;
    std::string close;
    for (std::size_t i = 0; i < depth; ++i) {
        const bool array = i % 2 == 0;
        open += array ? "[" : "{\"k\":";
        close += array ? ']' : '}';
    }
    return open + core + std::string(close.rbegin(), close.rend());
}

}  // namespace tavrin::test
