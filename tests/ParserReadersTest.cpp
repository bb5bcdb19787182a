// The readers called directly: where they leave the cursor and the rule that
// only the first value must be a container; Node::Deserialize as the entry.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/LogCapture.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;

struct Read {
    const char* text;
    Node* (Parser::*reader)();
    char following;      // what the next read returns: the value ends just before it
    const char* written;  // the value read, written back
};

TEST(ParserReaders, LeaveTheCursorOnTheLastCharacterOfTheValue) {
    tavrin::test::LogCapture log;
    const std::vector<Read> cases = {
        {"-42,", &Parser::ParseInt64, ',', "-42"}, {"0]", &Parser::ParseInt64, ']', "0"},
        {"12", &Parser::ParseInt64, '\0', "12"}, {"2.50}", &Parser::ParseDouble, '}', "2.5"},
        {"-1.5e-3 ,", &Parser::ParseDouble, ' ', "-0.0015"}, {"1E+5]", &Parser::ParseDouble, ']', "1e+05"},
        {"7,", &Parser::ParseDouble, ',', "7.0"}, {"-3/04,", &Parser::ParseFraction, ',', "-3/4"},
        {" \t\"a\\\"b\":", &Parser::ParseString, ':', "\"a\\\"b\""}, {"true,", &Parser::ParseBool, ',', "true"},
        {"false]", &Parser::ParseBool, ']', "false"},
        // Called directly, the container readers leave the top-level rule to
        // their first element, which ParseValue still applies.
        {"[[],[[2]]] x", &Parser::ParseArray, ' ', "[[],[[2]]]"}, {"{\"a\":{}}x", &Parser::ParseObject, 'x', "{\"a\":{}}"},
    };
    for (const Read& c : cases) {
        Parser parser(c.text);
        const std::unique_ptr<Node> value((parser.*c.reader)());
        EXPECT_EQ(value->Serialize(), c.written) << c.text;
        EXPECT_EQ(parser.GetNextChar(), static_cast<unsigned char>(c.following)) << c.text;
    }
    EXPECT_EQ(log.Text(), "");
}

TEST(ParserReaders, OnlyTheFirstValueMustBeAContainer) {
    tavrin::test::LogCapture log;
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

TEST(NodeDeserialize, ReplacesTheContentOnlyOnSuccessAndReadsUpToTheFirstNul) {
    tavrin::test::LogCapture log;
    Node node;
    ASSERT_TRUE(node.Deserialize("{\"a\":1,\"b\":[true]}"));
    ASSERT_TRUE(node.Deserialize(std::string("[2]\0[[[", 7)));
    EXPECT_EQ(node.Serialize(), "[2]");
    EXPECT_FALSE(node.Deserialize(std::string("[\"a\0b\"]", 7)));
    EXPECT_FALSE(node.Deserialize("[2,"));
    log.Reset();
    EXPECT_FALSE(node.Deserialize(static_cast<const char*>(nullptr)));
    const std::string nullLog = log.Text();
    log.Reset();
    EXPECT_FALSE(node.Deserialize(""));
    EXPECT_EQ(nullLog, log.Text());  // a null text fails like an empty one
    EXPECT_NE(nullLog, "");
    EXPECT_EQ(node.Serialize(), "[2]");
}

}  // namespace
