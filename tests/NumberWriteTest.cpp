// The node writer's doubles: the shortest text that reads back to the same
// bits, as std::to_chars writes it, with ".0" after an integer.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

#include "json/JsonNode.h"

namespace {

using tavrin::plugin::json::Node;

std::string Expected(double value) {
    char text[64];
    std::string written(text, std::to_chars(text, text + sizeof text, value).ptr);
    if (written.find_first_of(".e") == std::string::npos) written += ".0";
    return written;
}

double FromBits(std::uint64_t bits) {
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Random bit patterns (every exponent, subnormals and powers of two among
// them) and the decimals documents hold, short and long, near the ends of
// the fixed notation and of the exact integers.
TEST(NumberWrite, DoublesAreTheShortestTextThatReadsBack) {
    std::mt19937_64 random(20261124);
    for (const double value : {0.0, -0.0, 1.0, 0.1, 1e22, 1e23, 123456.0, 1e16, 9007199254740993.0,
                               18014398509481984.0, 5e-324, 2.2250738585072014e-308, 1.7976931348623157e308,
                               0.001, 0.0001, 100000.0, 1000000.0, 1e21, 4.35e-5, -65.61361699999998})
        EXPECT_EQ(Node(value).Serialize(), Expected(value)) << value;
    for (int round = 0; round < 200000; ++round) {
        double value = FromBits(random());
        if (round % 2 == 1) {
            const double digits = static_cast<double>(random() % 1000000000000000000u);
            value = digits / std::pow(10.0, static_cast<int>(random() % 40) - 10);
        }
        if (std::isnan(value) || std::isinf(value)) continue;
        ASSERT_EQ(Node(value).Serialize(), Expected(value)) << std::hexfloat << value;
    }
}

}  // namespace
