// The parser's nesting bound: the deepest admitted documents parse (and their
// trees copy, assign, write and free) on a small thread stack, deeper ones
// fail cleanly with one line of their own, and parsing costs allocations in
// proportion to the size of the text.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/AllocationCounter.h"
#include "support/DeepDocuments.h"
#include "support/LogCapture.h"
#include "support/SmallStack.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using namespace tavrin::test;  // documents, log capture, small stack

constexpr std::size_t kBound = Parser::kDefaultMaxDepth;
const char kSource[] = "plugin/json/Parser.cpp";
const std::string kValueOfK = RedLine(kSource, "ParseObject", "can't parse the value of k");

std::string TooDeepLine(const char* function, std::size_t bound) {
    return RedLine(kSource, function,
                   " nesting deeper than " + std::to_string(bound) + " levels, please check string format!");
}

// Parses `text` on a small stack and gives its log; a tree read is copied,
// assigned, written and freed, and must write the text read.
std::string ParseOnSmallStack(const std::string& text, bool parses) {
    LogCapture log;
    EXPECT_TRUE(RunOnStack(256 * 1024, [&] {
        Node tree(std::string("kept"));
        EXPECT_EQ(tree.Deserialize(text), parses);
        Node copy(tree);
        Node assigned(true);
        assigned = copy;
        tree = Node();
        EXPECT_EQ(assigned.Serialize(), parses ? text : "\"kept\"");
    }));
    return log.Lines();
}

TEST(ParserDepth, DeepestAdmittedDocumentsFitASmallStackDeeperOnesFailWithALineOfTheirOwn) {
    for (const std::string& text : {NestedArrays(kBound), NestedObjects(kBound - 1, "{}"), AlternatingNesting(kBound)})
        EXPECT_EQ(ParseOnSmallStack(text, true), "");
    EXPECT_EQ(ParseOnSmallStack(NestedArrays(kBound + 1), false), TooDeepLine("ParseArray", kBound));
    EXPECT_EQ(ParseOnSmallStack(std::string(1000000, '['), false), TooDeepLine("ParseArray", kBound));
    std::string manyValueLines;
    for (std::size_t i = 0; i < kBound; ++i) manyValueLines += kValueOfK;
    EXPECT_EQ(ParseOnSmallStack(NestedObjects(1000000, ""), false),
              TooDeepLine("ParseObject", kBound) + manyValueLines);
}

// The tree a parser bounded at `bound` reads from `text`, written back; ""
// when it fails.
std::string ParseBounded(const std::string& text, int bound) {
    Parser parser(text.c_str());
    parser.SetMaxDepth(bound);
    EXPECT_EQ(parser.MaxDepth(), bound < 1 ? 1 : bound);
    const std::unique_ptr<Node> result(parser.ParseValue());
    return result->IsEmpty() ? "" : result->Serialize();
}

TEST(ParserDepth, EachParserCanSetItsOwnBound) {
    LogCapture log;
    EXPECT_EQ(ParseBounded("[[{\"a\":1}]]", 3), "[[{\"a\":1}]]");
    EXPECT_EQ(ParseBounded("[[[{\"a\":1}]]]", 3), "");
    EXPECT_EQ(ParseBounded("[1]", 0), "[1]");  // taken as 1
    EXPECT_EQ(ParseBounded("[[]]", -5), "");
    EXPECT_EQ(ParseBounded(AlternatingNesting(kBound * 4), kBound * 4), AlternatingNesting(kBound * 4));
    EXPECT_EQ(log.Lines(), TooDeepLine("ParseObject", 3) + TooDeepLine("ParseArray", 1));
    Parser parser("{\"a\":[[1]]}");  // the failure offset follows the parser's own bound
    parser.SetMaxDepth(2);
    EXPECT_TRUE(std::unique_ptr<Node>(parser.ParseValue())->IsEmpty());
    EXPECT_EQ(parser.FailureOffset(), 6);
}

std::string WideArray(std::size_t size) {
    std::string text = "[";
    for (std::size_t i = 0; i < size; ++i) text += "[1,\"x\"],";
    return text + "0]";
}
std::string WideObject(std::size_t size) {
    std::string text = "{";
    for (std::size_t i = 0; i < size; ++i) text += "\"k" + std::to_string(i) + "\":[" + std::to_string(i) + "],";
    return text + "\"end\":0}";
}

// Twice the text may cost at most about twice the allocations; elements
// copied into their containers instead of moved would cost the square. The
// tree read writes the text back (every member of the wide object kept).
TEST(ParserDepth, ParsingAllocatesInProportionToTheText) {
    for (std::string (*document)(std::size_t) :
         {+[](std::size_t n) { return NestedArrays(n); }, +[](std::size_t n) { return NestedObjects(n); },
          +[](std::size_t n) { return AlternatingNesting(n); }, &WideArray, &WideObject}) {
        std::size_t calls[2] = {};
        for (int i = 0; i < 2; ++i) {
            const std::string text = document(1000u * static_cast<std::size_t>(i + 1));
            Parser parser(text.c_str());
            parser.SetMaxDepth(1 << 20);
            AllocationCounter counter;
            const std::unique_ptr<Node> tree(parser.ParseValue());
            calls[i] = counter.Calls();
            EXPECT_EQ(tree->Serialize(), text);
        }
        EXPECT_GT(calls[0], 0u);
        EXPECT_LE(calls[1], 2 * calls[0] + 64);
    }
}

}  // namespace
