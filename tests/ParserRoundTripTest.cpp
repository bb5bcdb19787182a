// Text written by Node::Serialize reads back to the same tree, and reading
// real documents works: generated trees of every kind, the benchmark corpus,
// and (for robustness only) public test files of standard JSON.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/LogCapture.h"
#include "support/RandomTree.h"
#include "support/SmallStack.h"
#include "support/SourceLine.h"

namespace {

using tavrin::plugin::json::Node;
using namespace tavrin::test;  // random trees, log capture, small stack

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

TEST(ParserRoundTrip, GeneratedDocumentsReadBackEqual) {
    RandomTree random(20261123);
    for (int round = 0; round < 1000; ++round) ExpectRoundTrip(random.Document(1 + round % 8, 1 + round % 12));
    ExpectRoundTrip(random.WideArray(50000));
    ExpectRoundTrip(random.WideObject(20000));
    EXPECT_TRUE(RunOnStack(256 * 1024, [&random] {
        ExpectRoundTrip(random.DeepDocument(tavrin::plugin::json::Parser::kDefaultMaxDepth));
    }));
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
