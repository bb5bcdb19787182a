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
#include "support/LogCapture.h"
#include "support/SmallStack.h"
#include "support/SourceLine.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using tavrin::test::LogCapture;
using tavrin::test::RedLine;
using tavrin::test::SourceLine;

constexpr std::size_t kSmallStack = 256 * 1024;
constexpr int kBound = Parser::kDefaultMaxDepth;
const char* const kSource = "plugin/json/Parser.cpp";

std::string Repeat(const std::string& piece, int times) {
    std::string text;
    text.reserve(piece.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i) text += piece;
    return text;
}

std::string NestedArrays(int depth) { return Repeat("[", depth) + Repeat("]", depth); }
std::string NestedObjects(int depth) {
    return Repeat("{\"k\":", depth - 1) + "{}" + Repeat("}", depth - 1);
}
// Arrays and objects alternately: [{"k":[{"k":...}]}].
std::string NestedMixed(int depth) {
    std::string open, close;
    for (int level = 0; level < depth; ++level) {
        const bool array = level % 2 == 0;
        open += array ? "[" : "{\"k\":";
        close.insert(0, array ? "]" : "}");
    }
    return open + "1" + close;
}

// The line a container reader writes when the nesting is too deep.
std::string TooDeepLine(const char* function, int bound) {
    const int line = SourceLine(kSource, "\" nesting deeper than \"",
                                std::string(function) == "ParseArray" ? 1 : 2);
    return RedLine(kSource, line, function,
                   " nesting deeper than " + std::to_string(bound) +
                       " levels, please check string format!");
}

// Parses `text`, then copies, assigns, writes and frees the tree; the text
// written must be the text read.
void ParseAndExercise(const std::string& text) {
    Node tree;
    ASSERT_TRUE(tree.Deserialize(text));
    Node copy(tree);
    Node assigned(true);
    assigned = copy;
    EXPECT_EQ(assigned.Serialize(), text);
    tree = Node();
    EXPECT_EQ(copy.Serialize(), text);
}

TEST(ParserDepth, DeepestAdmittedDocumentsFitASmallStack) {
    LogCapture log;
    EXPECT_TRUE(tavrin::test::RunOnStack(kSmallStack, [] {
        ParseAndExercise(NestedArrays(kBound));
        ParseAndExercise(NestedObjects(kBound));
        ParseAndExercise(NestedMixed(kBound));
    }));
    EXPECT_EQ(log.Text(), "");
}

TEST(ParserDepth, OneLevelMoreFailsWithOneLineOfItsOwn) {
    LogCapture log;
    Node node(std::string("kept"));
    EXPECT_FALSE(node.Deserialize(NestedArrays(kBound + 1)));
    EXPECT_EQ(log.Text(), TooDeepLine("ParseArray", kBound));
    EXPECT_EQ(node.Serialize(), "\"kept\"");

    // The enclosing objects add their usual line for a failed value.
    log.Reset();
    EXPECT_FALSE(node.Deserialize("{\"a\":" + NestedArrays(kBound)));
    const int valueLine = SourceLine(kSource, "\"can't parse the value of \"");
    EXPECT_EQ(log.Text(), TooDeepLine("ParseArray", kBound) +
                              RedLine(kSource, valueLine, "ParseObject",
                                      "can't parse the value of a"));
}

TEST(ParserDepth, AMillionOpeningBracketsFailCleanlyOnASmallStack) {
    LogCapture log;
    bool parsed = true;
    EXPECT_TRUE(tavrin::test::RunOnStack(kSmallStack, [&parsed] {
        Node node;
        parsed = node.Deserialize(std::string(1000000, '['));
    }));
    EXPECT_FALSE(parsed);
    EXPECT_EQ(log.Text(), TooDeepLine("ParseArray", kBound));

    log.Reset();
    EXPECT_TRUE(tavrin::test::RunOnStack(kSmallStack, [&parsed] {
        Node node;
        parsed = node.Deserialize(Repeat("{\"a\":", 1000000));
    }));
    EXPECT_FALSE(parsed);
    const int valueLine = SourceLine(kSource, "\"can't parse the value of \"");
    EXPECT_EQ(log.Text(),
              TooDeepLine("ParseObject", kBound) +
                  Repeat(RedLine(kSource, valueLine, "ParseObject", "can't parse the value of a"),
                         kBound));
}

// Parses `text` with a parser bounded at `bound`.
bool ParseBounded(const std::string& text, int bound) {
    Parser parser(text.c_str());
    parser.SetMaxDepth(bound);
    EXPECT_EQ(parser.MaxDepth(), bound < 1 ? 1 : bound);
    const std::unique_ptr<Node> result(parser.ParseValue());
    return !result->IsEmpty();
}

TEST(ParserDepth, EachParserCanSetItsOwnBound) {
    LogCapture log;
    EXPECT_TRUE(ParseBounded("[[{\"a\":1}]]", 3));
    EXPECT_FALSE(ParseBounded("[[[{\"a\":1}]]]", 3));
    EXPECT_EQ(log.Text(), TooDeepLine("ParseObject", 3));

    log.Reset();
    EXPECT_TRUE(ParseBounded("[1]", 0));  // taken as 1
    EXPECT_FALSE(ParseBounded("[[]]", -5));
    EXPECT_EQ(log.Text(), TooDeepLine("ParseArray", 1));

    log.Reset();
    EXPECT_TRUE(ParseBounded(NestedMixed(kBound * 4), kBound * 4));
    EXPECT_EQ(log.Text(), "");
}

// Allocations made while parsing `text`.
std::size_t ParseAllocations(const std::string& text) {
    tavrin::test::AllocationCounter counter;
    EXPECT_TRUE(ParseBounded(text, 1 << 20));
    return counter.Calls();
}

// Twice the text may cost at most about twice the allocations; elements
// copied into their containers instead of moved would cost the square.
void ExpectLinearAllocations(std::string (*document)(int)) {
    const std::size_t small = ParseAllocations(document(1000));
    const std::size_t large = ParseAllocations(document(2000));
    EXPECT_GT(small, 0u);
    EXPECT_LE(large, 2 * small + 64);
}

std::string WideArray(int size) { return "[" + Repeat("[1,\"x\"],", size) + "0]"; }
std::string WideObject(int size) {
    std::string text = "{";
    for (int i = 0; i < size; ++i) text += "\"k" + std::to_string(i) + "\":[" + std::to_string(i) + "],";
    return text + "\"end\":0}";
}

TEST(ParserDepth, ParsingAllocatesInProportionToTheText) {
    ExpectLinearAllocations(&NestedArrays);
    ExpectLinearAllocations(&NestedObjects);
    ExpectLinearAllocations(&NestedMixed);
    ExpectLinearAllocations(&WideArray);
    ExpectLinearAllocations(&WideObject);
}

}  // namespace
