#include "json/common/IndexHash.h"

#include <chrono>
#include <cstdint>
#if __has_include(<sys/random.h>)
#include <sys/random.h>
#endif

namespace tavrin::plugin::json::common {

namespace {

// The clock and an address (randomised by the loader), mixed with the
// system's random bytes when it has them ready. The draw never waits: a
// device that loads the plug-in early in its start, before the system has
// gathered its entropy, must not have its loading stall here.
std::uint64_t DrawSeed() {
    std::uint64_t seed = static_cast<std::uint64_t>(
        std::chrono::steady_clock::now().time_since_epoch().count());
    seed ^= static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&seed)) << 16;
#ifdef GRND_NONBLOCK
    std::uint64_t drawn = 0;
    if (getrandom(&drawn, sizeof drawn, GRND_NONBLOCK) == static_cast<ssize_t>(sizeof drawn)) seed ^= drawn;
#endif
    return seed;
}

}  // namespace

const std::uint64_t kIndexSeed = DrawSeed();

}  // namespace tavrin::plugin::json::common
