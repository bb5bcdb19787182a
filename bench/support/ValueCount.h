#pragma once

#include <cstddef>

#include "json/JsonNode.h"
#include "json/legacy/Value.h"

namespace tavrin::bench {

// The number of values in a tree: every scalar, array and object, the top
// one included (object keys are not values).
std::size_t CountValues(const tavrin::plugin::json::Node& node);
std::size_t CountValues(const json::Value& value);

}  // namespace tavrin::bench
