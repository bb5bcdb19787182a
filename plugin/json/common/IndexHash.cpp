#include "json/common/IndexHash.h"

#include <chrono>
#include <random>

namespace tavrin::plugin::json::common {

namespace {

// The system's random source where it has one, mixed with the clock and an
// address (randomised by the loader), which stand alone otherwise.
std::uint64_t DrawSeed() {
    std::uint64_t seed = static_cast<std::uint64_t>(
        std::chrono::steady_clock::now().time_since_epoch().count());
    seed ^= static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&seed)) << 16;
    try {
        std::random_device device;
        seed ^= (std::uint64_t{device()} << 32) ^ device();
    } catch (...) {
        // No random device: the clock and the address stand alone.
    }
    return seed;
}

}  // namespace

const std::uint64_t kIndexSeed = DrawSeed();

}  // namespace tavrin::plugin::json::common
