// Text written by Node::Serialize reads back to the same tree, and reading
// real documents works: generated trees of every kind, the shared benchmark
// corpus, and (for robustness only) public test files of standard JSON.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/LogCapture.h"
#include "support/RandomTree.h"
#include "support/SmallStack.h"
#include "support/SourceLine.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using tavrin::test::RandomTree;
using tavrin::test::TreeDifference;

// Writes `tree`, reads the text back into a new node, and checks the new
// tree equals `tree` and writes the same text. Nothing may be logged.
void ExpectRoundTrip(const Node& tree) {
    tavrin::test::LogCapture log;
    const std::string text = Node(tree).Serialize();
    Node read;
    ASSERT_TRUE(read.Deserialize(text)) << text.substr(0, 200);
    EXPECT_EQ(TreeDifference(tree, read), "") << text.substr(0, 200);
    EXPECT_EQ(read.Serialize(), text);
    EXPECT_EQ(log.Text(), "");
}

TEST(ParserRoundTrip, GeneratedDocumentsReadBackEqual) {
    RandomTree random(20261123);
    for (int round = 0; round < 1000; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        ExpectRoundTrip(random.Document(1 + round % 8, 1 + round % 12));
    }
}

TEST(ParserRoundTrip, DeepAndWideDocumentsReadBackEqual) {
    RandomTree random(42);
    ExpectRoundTrip(random.WideArray(50000));
    ExpectRoundTrip(random.WideObject(20000));
    EXPECT_TRUE(tavrin::test::RunOnStack(256 * 1024, [&random] {
        ExpectRoundTrip(random.DeepDocument(Parser::kDefaultMaxDepth));
    }));
}

std::string SharedFile(const std::string& name) {
    return tavrin::test::ReadFile(std::string(TAVRIN_DATA_DIR) + "/" + name);
}

TEST(ParserRoundTrip, BenchmarkCorpusParsesAndReadsBackEqual) {
    for (const char* name : {"canada.json", "citm_catalog.json", "twitter.json"}) {
        SCOPED_TRACE(name);
        const std::string text = SharedFile(std::string("corpus/") + name);
        ASSERT_GT(text.size(), 100000u);
        tavrin::test::LogCapture log;
        Node document;
        ASSERT_TRUE(document.Deserialize(text));
        EXPECT_EQ(log.Text(), "");
        EXPECT_TRUE(document.Is<Node::Object>());
        EXPECT_GT(document.Size(), 0u);
        ExpectRoundTrip(document);
    }
}

std::vector<std::filesystem::path> TestDataFiles() {
    std::vector<std::filesystem::path> files;
    const std::filesystem::path root = std::string(TAVRIN_DATA_DIR) + "/testdata";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
        if (entry.is_regular_file() && entry.path().extension() == ".json") files.push_back(entry.path());
    return files;
}

// Their verdicts are for standard JSON, not this dialect: every file must
// either parse (and then read back equal) or fail with at least one red
// line, without crashing, on a small stack.
TEST(ParserRoundTrip, PublicTestFilesParseOrFailWithARedLine) {
    const std::vector<std::filesystem::path> files = TestDataFiles();
    ASSERT_GT(files.size(), 300u);
    int parsed = 0;
    for (const auto& file : files) {
        SCOPED_TRACE(file.string());
        const std::string text = tavrin::test::ReadFile(file.string());
        tavrin::test::LogCapture log;
        Node document;
        bool ok = false;
        ASSERT_TRUE(tavrin::test::RunOnStack(256 * 1024, [&] { ok = document.Deserialize(text); }));
        if (ok) {
            EXPECT_EQ(log.Text(), "");
            ExpectRoundTrip(document);
            ++parsed;
        } else {
            EXPECT_NE(log.Text().find("\033[31m"), std::string::npos);
        }
    }
    EXPECT_GT(parsed, 50);
}

}  // namespace
