#pragma once

#include <cstddef>

#include "json/JsonNode.h"

namespace tavrin::bench {

// The heap a tree of Nodes cannot do without, given the node layout: one
// Node per value (the root's own, each array element's slot, each object
// member's pair), the held value's own buffer (sizeof the held type), and the
// storage its value needs at the exact size: string texts that do not fit in
// the string itself, vectors of exactly size() Nodes, tables of exactly
// size() pairs. No growth slack, no allocator overhead.
std::size_t NodeFloorBytes(const tavrin::plugin::json::Node& root);

}  // namespace tavrin::bench
