#pragma once

#include <cstddef>
#include <cstdint>

namespace tavrin::plugin::json::detail {

// The odd multiplier of SpreadHash, drawn once per process.
extern const std::uint64_t kIndexMultiplier;

// Spreads a stored 32-bit key hash over the slots of a position index. Key
// hashes are unseeded and easy to invert, so without the per-process random
// multiplier a document could aim thousands of distinct keys at one slot and
// make filling an object quadratic. The high half of the product is the
// best-mixed part; it fits std::size_t on every target.
inline std::size_t SpreadHash(std::uint32_t hash) {
    return static_cast<std::size_t>(((hash + std::uint64_t{1}) * kIndexMultiplier) >> 32);
}

// SpreadHash as a hash function object for the standard containers.
struct SpreadHasher {
    std::size_t operator()(std::uint32_t hash) const { return SpreadHash(hash); }
};

}  // namespace tavrin::plugin::json::detail
