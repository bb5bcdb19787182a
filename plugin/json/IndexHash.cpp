#include "json/internal/IndexHash.h"

#include <chrono>
#include <random>

namespace tavrin::plugin::json::detail {

namespace {

// splitmix64's finaliser: every bit of the result depends on every bit of x.
std::uint64_t Mix(std::uint64_t x) {
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
    return x ^ (x >> 31);
}

// The system's random source where it has one; the clock and an address
// (randomised by the loader) otherwise.
std::uint64_t DrawMultiplier() {
    std::uint64_t seed = static_cast<std::uint64_t>(
        std::chrono::steady_clock::now().time_since_epoch().count());
    seed ^= static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&seed));
    try {
        std::random_device device;
        seed ^= (std::uint64_t{device()} << 32) ^ device();
    } catch (...) {
        // No random device: the clock and the address stand alone.
    }
    return Mix(seed) | 1;
}

}  // namespace

const std::uint64_t kIndexMultiplier = DrawMultiplier();

}  // namespace tavrin::plugin::json::detail
