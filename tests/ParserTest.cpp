// The parser: cursor operations, type detection and readers called directly;
// Node::Deserialize given no text; the nesting bound (the deepest admitted
// documents parse, and their trees copy, assign, write and free, on a small
// thread stack, deeper ones fail cleanly with one line of their own); and
// parsing costs allocations in proportion to the size of the text.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "base/Fraction.h"
#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/AllocationCounter.h"
#include "support/DeepDocuments.h"
#include "support/LogCapture.h"
#include "support/SmallStack.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using namespace tavrin::test;  // log capture, documents, small stack, allocation counter

const char kSource[] = "plugin/json/Parser.cpp";

TEST(ParserCursor, ReadsUpToTheTerminatorAndLogsEveryReadPastIt) {
    LogCapture log;
    Parser parser("a\xE9");
    EXPECT_EQ(parser.GetNextChar(), 'a');
    EXPECT_EQ(parser.GetNextChar(), 0xE9);
    EXPECT_EQ(parser.GetNextChar(), 0);
    EXPECT_TRUE(parser.EOL());
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(parser.GetNextChar(), 0);
    EXPECT_EQ(parser.GetNextChar(), 0);
    EXPECT_EQ(parser._pos, 2);
    const std::string pastEnd = RedLine(kSource, "GetNextChar", " unexpected _token!");
    EXPECT_EQ(log.Lines(), pastEnd + pastEnd);
    log.Reset();
    parser.Retract();  // the terminator is readable once more without a line
    EXPECT_EQ(parser.GetNextChar(), 0);
    EXPECT_EQ(log.Text(), "");
    EXPECT_STREQ(Parser()._text, " ");
    Parser empty("");  // the terminator is the first character
    EXPECT_EQ(empty.GetNextChar(), 0);
    EXPECT_EQ(empty.GetNextChar(), 0);
    EXPECT_EQ(empty._pos, 0);
    EXPECT_EQ(log.Lines(), pastEnd);
    log.Reset();
    Parser placed("ab");  // a cursor put on the terminator: reads there end the text
    placed._pos = 2;
    EXPECT_EQ(placed.GetNextChar(), 0);
    EXPECT_TRUE(placed.EOL());
    log.Reset();
    placed.SkipSpaces();  // at the end, skipping reads past it once
    EXPECT_TRUE(placed.EOL());
    EXPECT_EQ(log.Lines(), pastEnd);
    const char endsFirst[] = "\0 x";  // what follows the terminator is no text
    Parser ended(endsFirst);
    EXPECT_EQ(ended.GetNextChar(), 0);
    log.Reset();
    ended.SkipSpaces();
    EXPECT_TRUE(ended.EOL());
    EXPECT_EQ(ended.GetNextChar(), 0);
    EXPECT_EQ(log.Lines(), pastEnd);
}

TEST(ParserCursor, RetractConcatSkipSpacesAndParseSpecific) {
    LogCapture log;
    Parser parser("xy");
    parser.GetNextChar();
    parser.Concat();
    parser.GetNextChar();
    parser.Concat();
    parser.Concat();
    EXPECT_EQ(parser._buffer, "xyy");
    parser.Retract();
    EXPECT_EQ(std::make_pair(parser._pos, parser._token), std::make_pair(0, ' '));
    EXPECT_FALSE(parser.EOL());
    EXPECT_EQ(parser.GetNextChar(), 'y');
    // Blank, tab, CR and LF are skipped; the first other character is kept,
    // and is the token until it is read.
    for (const auto& [text, next] : std::vector<std::pair<const char*, int>>{
             {" \t\r\n\f x", '\f'}, {"\v", '\v'}, {"  ", 0}, {"\n1", '1'}}) {
        Parser spaces(text);
        spaces.SkipSpaces();
        EXPECT_EQ(spaces.EOL(), next == 0) << text;
        EXPECT_EQ(static_cast<unsigned char>(spaces._token), next) << text;
        EXPECT_EQ(spaces.GetNextChar(), next) << text;
    }
    Parser specific("abdz");  // matched literally, without stepping back
    EXPECT_FALSE(specific.ParseSpecific("abc"));
    EXPECT_EQ(log.Lines(), RedLine(kSource, "ParseSpecific", "_token error!"));
    EXPECT_EQ(specific.GetNextChar(), 'z');
    EXPECT_FALSE(Parser(" true").ParseSpecific("true"));
    Parser word("true,");
    EXPECT_TRUE(word.ParseSpecific("true"));
    EXPECT_EQ(word._pos, 3);
    EXPECT_TRUE(word.ParseSpecific(""));
}

// A kind as one letter: '?' for none, else after the type's name.
char Letter(const std::type_info* kind) {
    if (kind == nullptr) return '?';
    for (const auto& [type, letter] : std::vector<std::pair<const std::type_info*, char>>{
             {&typeid(Node::Object), 'O'}, {&typeid(Node::Array), 'A'}, {&typeid(std::string), 's'},
             {&typeid(bool), 'b'}, {&typeid(long long), 'i'}, {&typeid(double), 'd'},
             {&typeid(tavrin::base::Fraction), 'f'}})
        if (*kind == *type) return letter;
    return '!';
}

TEST(ParserTypeDetect, ClassifiesByFirstCharacterAndNumbersByLookAheadCursorStays) {
    LogCapture log;
    for (const auto& [text, kind] : std::vector<std::pair<const char*, char>>{
             {"{", 'O'}, {"[", 'A'}, {"\"a\"", 's'}, {"t", 'b'}, {"fx", 'b'}, {"-7]", 'i'}, {"12", 'i'},
             {"2.5]", 'd'}, {"1e5]", 'd'}, {"1E5}", 'd'}, {"1/3]", 'f'}, {"1 /3]", 'f'}, {"1 2.5]", 'd'},
             {"1 \"x\" ab 2,3.5", 'i'}, {"", '?'}, {"null", '?'}, {"TRUE", '?'}, {"F", '?'}, {"+1", '?'},
             {".5", '?'}, {"\xC3\xA9", '?'}, {"}", '?'}}) {
        log.Reset();
        Parser parser(text);
        EXPECT_EQ(Letter(parser.TypeDetect()), kind) << text;
        EXPECT_EQ(std::make_pair(parser._pos, parser._token), std::make_pair(-1, ' ')) << text;
        const std::string refusal = std::string("can't detect the type of") + text + ",please check string format!";
        EXPECT_EQ(log.Lines(), kind != '?' ? "" : RedLine(kSource, "TypeDetect", refusal));
    }
}

// The kind of the number at every digit or "-" of `text`, read left to right
// by one parser (as a parse does) or each by a fresh parser.
std::string KindsAlong(const std::string& text, bool fresh) {
    Parser shared(text.c_str());
    std::string kinds;
    for (int pos = 0; pos < static_cast<int>(text.size()); ++pos) {
        const char c = text[static_cast<std::size_t>(pos)];
        if (!((c >= '0' && c <= '9') || c == '-')) continue;
        Parser own(text.c_str());
        Parser& parser = fresh ? own : shared;
        parser._pos = pos - 1;
        kinds += Letter(parser.TypeDetect());
    }
    return kinds;
}

TEST(ParserTypeDetect, CachedLookAheadGivesTheResultOfAFullScan) {
    std::mt19937 random(20261123);
    const std::string alphabet = "0123456789-- ,]}.eE/\"ax";
    for (int round = 0; round < 300; ++round) {
        std::string text;
        for (int i = 1 + static_cast<int>(random() % 60); i > 0; --i) text += alphabet[random() % alphabet.size()];
        EXPECT_EQ(KindsAlong(text, false), KindsAlong(text, true)) << text;
    }
    Parser parser("1 2 3 ] 4.5");
    std::string kinds;
    for (int pos : {3, -1, 7, 1}) {  // forwards, backwards, past the "]", behind the last scan
        parser._pos = pos;
        kinds += Letter(parser.TypeDetect());
    }
    parser._text = "1 2/3";  // another text, read where the last scan ran
    parser._pos = 1;
    kinds += Letter(parser.TypeDetect());
    EXPECT_EQ(kinds, "iidif");
}

TEST(ParserReaders, CalledDirectlyOnlyTheFirstValueMustBeAContainerAndAFailureIsPlaced) {
    LogCapture log;
    Parser fresh("[1]");
    EXPECT_TRUE(std::unique_ptr<Node>(fresh.ParseArray())->IsEmpty());
    Parser started("[1]");
    started._first = false;
    EXPECT_EQ(std::unique_ptr<Node>(started.ParseArray())->Serialize(), "[1]");
    Parser parser("5 [1]");
    EXPECT_TRUE(std::unique_ptr<Node>(parser.ParseValue())->IsEmpty());
    EXPECT_TRUE(parser._first);  // a refused value leaves the rule in force
    Parser nested(" [\"x\"] 5");
    std::unique_ptr<Node>(nested.ParseValue());
    EXPECT_FALSE(nested._first);
    Parser copy(nested), assigned("[]");  // copies go on from the cursor, under the rule as it stands
    assigned = copy;
    Parser& same = assigned;
    assigned = same;
    for (Parser* reader : {&copy, &assigned, &nested})
        EXPECT_EQ(std::unique_ptr<Node>(reader->ParseValue())->Serialize(), "5");
    Parser text("abc");  // a reader called first fails on the character it read
    EXPECT_TRUE(std::unique_ptr<Node>(text.ParseString())->IsEmpty());
    EXPECT_EQ(text.FailureOffset(), 0);
    Parser again("[1,x] [2]");  // a failed container leaves nothing to the next one of its level
    again._first = false;
    EXPECT_TRUE(std::unique_ptr<Node>(again.ParseArray())->IsEmpty());
    again._pos = 5;  // on the blank before "[2]"
    EXPECT_EQ(std::unique_ptr<Node>(again.ParseArray())->Serialize(), "[2]");
}

// (A refused text leaves the node as it was, and a NUL byte ends the text:
// see the conformance corpus.)
TEST(NodeDeserialize, ANullTextFailsLikeAnEmptyOne) {
    LogCapture log;
    Node node(true);
    EXPECT_FALSE(node.Deserialize(static_cast<const char*>(nullptr)));
    const std::string nullLog = log.Text();
    log.Reset();
    EXPECT_FALSE(node.Deserialize(""));
    EXPECT_EQ(nullLog, log.Text());
    EXPECT_NE(nullLog, "");
    EXPECT_FALSE(node.Deserialize(std::string("[1\0]", 4)));  // a string's text ends at a NUL too
    EXPECT_EQ(node.Serialize(), "true");
}

constexpr std::size_t kBound = Parser::kDefaultMaxDepth;
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
