// The parser's cursor operations, type detection and readers called
// directly; Node::Deserialize given no text.
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
#include "support/LogCapture.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using tavrin::test::LogCapture;
using tavrin::test::RedLine;

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
    Parser placed("ab");  // a cursor put on the terminator: reads there end the text
    placed._pos = 2;
    EXPECT_EQ(placed.GetNextChar(), 0);
    EXPECT_TRUE(placed.EOL());
    log.Reset();
    placed.SkipSpaces();  // at the end, skipping reads past it once
    EXPECT_TRUE(placed.EOL());
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
    // Blank, tab, CR and LF are skipped; the first other character is kept.
    for (const auto& [text, next] : std::vector<std::pair<const char*, int>>{
             {" \t\r\n\f x", '\f'}, {"\v", '\v'}, {"  ", 0}, {"\n1", '1'}}) {
        Parser spaces(text);
        spaces.SkipSpaces();
        EXPECT_EQ(spaces.EOL(), next == 0) << text;
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
    parser._text = "1/2";
    parser._pos = -1;
    kinds += Letter(parser.TypeDetect());
    EXPECT_EQ(kinds, "iidif");
}

TEST(ParserReaders, OnlyTheFirstValueMustBeAContainer) {
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
    EXPECT_EQ(std::unique_ptr<Node>(nested.ParseValue())->Serialize(), "5");
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
    EXPECT_EQ(node.Serialize(), "true");
}

}  // namespace
