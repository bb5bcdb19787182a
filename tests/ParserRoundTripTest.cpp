// Text written by Node::Serialize reads back to the same tree: doubles of
// every bit pattern and the benchmark corpus. (So does every case of the
// parser's corpus that parses, and every file of tests/data that the node
// fuzz target's replay reads.)
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

#include "json/JsonNode.h"
#include "support/LogCapture.h"

namespace {

using tavrin::plugin::json::Node;
using namespace tavrin::test;  // log capture, file reading

// Writes `tree`, reads the text back, and checks the new tree writes the same
// text (each kind writes a text of its own, doubles in a form that reads back
// bit for bit, so equal texts mean equal trees). Nothing may be logged.
void ExpectRoundTrip(const Node& tree) {
    LogCapture log;
    const std::string text = Node(tree).Serialize();
    Node read;
    ASSERT_TRUE(read.Deserialize(text)) << text.substr(0, 200);
    EXPECT_EQ(read.Serialize(), text);
    EXPECT_EQ(log.Text(), "");
}

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

// The benchmark corpus reads back equal. (Every file of tests/data also goes
// through the round-trip property of the node fuzz target's replay.)
TEST(ParserRoundTrip, BenchmarkCorpusParsesAndReadsBackEqual) {
    for (const char* name : {"canada.json", "citm_catalog.json", "twitter.json"}) {
        const std::string text = ReadFile(std::string(TAVRIN_DATA_DIR) + "/corpus/" + name);
        ASSERT_GT(text.size(), 100000u) << name;
        Node document;
        ASSERT_TRUE(document.Deserialize(text)) << name;
        ExpectRoundTrip(document);
    }
}

}  // namespace
