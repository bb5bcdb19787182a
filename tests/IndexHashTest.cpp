#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "json/common/IndexHash.h"

namespace {

using tavrin::plugin::json::common::SpreadHash;

// Key hashes that differ only in a few bits, as keys crafted against an
// unseeded index would: wherever those bits are, the hashes must still spread
// over the slots of an index (4096 into 1024 slots leave about 19 empty).
TEST(IndexHash, HashesAlikeInMostBitsSpreadOverTheSlots) {
    constexpr std::size_t kSlots = 1024;
    for (const int shift : {0, 4, 10, 16, 20}) {
        std::set<std::size_t> used;
        for (std::uint32_t i = 0; i < 4096; ++i) used.insert(SpreadHash(i << shift) & (kSlots - 1));
        EXPECT_GT(used.size(), kSlots * 9 / 10) << "hashes i << " << shift;
    }
}

}  // namespace
