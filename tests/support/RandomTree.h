#pragma once

#include <random>
#include <string>

#include "json/JsonNode.h"

namespace tavrin::test {

// Random node trees for property tests, built only of what the text form
// carries back unchanged: int64, finite doubles, booleans, fractions with a
// non-negative denominator, strings in escaped form (escapes, plain ASCII and
// bytes 128-255), arrays and objects.
class RandomTree {
public:
    explicit RandomTree(unsigned seed) : _random(seed) {}

    // An array or an object whose containers nest at most `depth` levels
    // (the top counts as one) and hold at most `width` items each.
    tavrin::plugin::json::Node Document(int depth, int width);

    // Arrays and objects nested alternately exactly `depth` levels, each
    // holding a few scalars beside the next level.
    tavrin::plugin::json::Node DeepDocument(int depth);

    // An array of `size` scalars, or an object of `size` members.
    tavrin::plugin::json::Node WideArray(int size);
    tavrin::plugin::json::Node WideObject(int size);

    tavrin::plugin::json::Node Scalar();
    // A string value in its escaped form, without the quotes.
    std::string EscapedText(int maxLength);

private:
    tavrin::plugin::json::Node Value(int depth, int width);
    tavrin::plugin::json::Node Container(bool array, int depth, int width);
    unsigned Below(unsigned bound) { return static_cast<unsigned>(_random() % bound); }

    std::mt19937 _random;
};

}  // namespace tavrin::test
