#pragma once
// Private to the plug-in's sources (not installed): shared by both readers.

#include <cstddef>
#include <cstdint>

namespace tavrin::plugin::json::common {

// The seed of SpreadHash, drawn once per process.
extern const std::uint64_t kIndexSeed;

// Spreads a stored 32-bit key hash over the slots of a position index. Key
// hashes are unseeded and easy to invert, so without the per-process random
// seed a document could aim thousands of distinct keys at one slot and make
// filling an object quadratic. The seeded hash goes through splitmix64's
// finaliser, in which every bit of the result depends on every bit of its
// input, so any slot mask takes well-mixed bits.
inline std::size_t SpreadHash(std::uint32_t hash) {
    std::uint64_t x = hash ^ kIndexSeed;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
    return static_cast<std::size_t>(x ^ (x >> 31));
}

// SpreadHash as a hash function object for the standard containers.
struct SpreadHasher {
    std::size_t operator()(std::uint32_t hash) const { return SpreadHash(hash); }
};

}  // namespace tavrin::plugin::json::common
