// Text written by Node::Serialize reads back to the same tree, and reading
// real documents works: doubles of every bit pattern, the benchmark corpus,
// and (for robustness only) public test files of standard JSON. (Every case
// of the parser's corpus that parses reads back from its written text too.)
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>

#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/SmallStack.h"

namespace {

using tavrin::plugin::json::Node;
using namespace tavrin::test;  // log capture, small stack

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

const std::string kData = TAVRIN_DATA_DIR;

TEST(ParserRoundTrip, BenchmarkCorpusParsesAndReadsBackEqual) {
    for (const char* name : {"canada.json", "citm_catalog.json", "twitter.json"}) {
        const std::string text = ReadFile(kData + "/corpus/" + name);
        ASSERT_GT(text.size(), 100000u) << name;
        Node document;
        ASSERT_TRUE(document.Deserialize(text)) << name;
        EXPECT_TRUE(document.Is<Node::Object>());
        ExpectRoundTrip(document);
    }
}

// Their verdicts are for standard JSON, not this dialect: every file must
// either parse (and then read back equal) or fail with a red line, without
// crashing, on a small stack.
TEST(ParserRoundTrip, PublicTestFilesParseOrFailWithARedLine) {
    int files = 0, parsed = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kData + "/testdata")) {
        if (!entry.is_regular_file() || entry.path().extension() != ".json") continue;
        SCOPED_TRACE(entry.path().string());
        const std::string text = ReadFile(entry.path().string());
        LogCapture log;
        Node document;
        bool ok = false;
        ++files;
        ASSERT_TRUE(RunOnStack(256 * 1024, [&] { ok = document.Deserialize(text); }));
        if (ok) ExpectRoundTrip(document);
        EXPECT_EQ(log.Text().find("\033[31m") != std::string::npos, !ok);
        parsed += ok;
    }
    EXPECT_GT(files, 300);
    EXPECT_GT(parsed, 50);
}

}  // namespace
