// Text written by Node::Serialize reads back to the same tree: here doubles
// of every bit pattern. (So does every case of the parser's corpus that
// parses, and every file of tests/data, the benchmark corpus among them, that
// the node fuzz target's replay reads.)
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

#include "json/JsonNode.h"

namespace {

using tavrin::plugin::json::Node;

// Every finite double, whatever its bit pattern, is written in a form the
// reader takes as a double (a "." or an exponent) that reads back to the same
// bits; so are ordinary values.
TEST(ParserRoundTrip, DoublesReadBackBitForBit) {
    std::mt19937_64 random(20261123);
    for (int i = 0; i < 40000; ++i) {
        double value = static_cast<double>(static_cast<long long>(random() % 2000000001) - 1000000000) / 1000;
        const std::uint64_t bits = random();
        if (i % 2 == 0) std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) continue;
        const std::string text = "[" + Node(value).Serialize() + "]";
        Node read;
        ASSERT_TRUE(read.Deserialize(text) && read[0].Is<double>()) << text;
        const double back = read[0].As<double>();
        EXPECT_EQ(std::memcmp(&back, &value, sizeof value), 0) << text;
    }
}

}  // namespace
