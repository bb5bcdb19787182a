#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "json/internal/IndexHash.h"

namespace {

using tavrin::plugin::json::detail::SpreadHash;

// Key hashes that agree in their low 20 bits, as keys crafted against an
// unseeded index would: they must still spread over the slots of an index.
TEST(IndexHash, HashesAlikeInTheirLowBitsSpreadOverTheSlots) {
    constexpr std::size_t kSlots = 1024;
    std::set<std::size_t> used;
    for (std::uint32_t i = 0; i < 4096; ++i) used.insert(SpreadHash(i << 20) & (kSlots - 1));
    EXPECT_GT(used.size(), kSlots * 9 / 10);
}

}  // namespace
