// The readers called directly: where they leave the cursor, what they hold,
// and Node::Deserialize as the entry point.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/Fraction.h"
#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/LogCapture.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;

using Reader = Node* (Parser::*)();

// Reads the value at the start of `text` with `reader` and checks that the
// cursor rests on its last character: the next read returns what follows.
std::unique_ptr<Node> ReadBefore(const char* text, Reader reader, char following) {
    Parser parser(text);
    std::unique_ptr<Node> value((parser.*reader)());
    EXPECT_FALSE(value->IsEmpty()) << text;
    EXPECT_EQ(parser.GetNextChar(), static_cast<unsigned char>(following)) << text;
    return value;
}

TEST(ParserReaders, LeaveTheCursorOnTheLastCharacterOfTheValue) {
    tavrin::test::LogCapture log;
    EXPECT_EQ(ReadBefore("-42,", &Parser::ParseInt64, ',')->As<long long>(), -42);
    EXPECT_EQ(ReadBefore("0]", &Parser::ParseInt64, ']')->As<long long>(), 0);
    EXPECT_EQ(ReadBefore("12", &Parser::ParseInt64, '\0')->As<long long>(), 12);
    EXPECT_EQ(ReadBefore("2.50}", &Parser::ParseDouble, '}')->As<double>(), 2.5);
    EXPECT_EQ(ReadBefore("-1.5e-3 ,", &Parser::ParseDouble, ' ')->As<double>(), -1.5e-3);
    EXPECT_EQ(ReadBefore("1E+5]", &Parser::ParseDouble, ']')->As<double>(), 1e5);
    EXPECT_EQ(ReadBefore("7,", &Parser::ParseDouble, ',')->As<double>(), 7.0);
    const auto fraction = ReadBefore("-3/04,", &Parser::ParseFraction, ',');
    EXPECT_EQ(fraction->As<tavrin::base::Fraction>().num, -3);
    EXPECT_EQ(fraction->As<tavrin::base::Fraction>().den, 4);
    EXPECT_EQ(ReadBefore(" \t\"a\\\"b\":", &Parser::ParseString, ':')->As<std::string>(),
              "a\\\"b");
    EXPECT_TRUE(ReadBefore("true,", &Parser::ParseBool, ',')->As<bool>());
    EXPECT_FALSE(ReadBefore("false]", &Parser::ParseBool, ']')->As<bool>());
    // Called directly, the container readers leave the top-level rule to
    // their first element, which ParseValue still applies.
    EXPECT_EQ(ReadBefore("[[],[[2]]] x", &Parser::ParseArray, ' ')->Serialize(), "[[],[[2]]]");
    EXPECT_EQ(ReadBefore("{\"a\":{}}x", &Parser::ParseObject, 'x')->Serialize(), "{\"a\":{}}");
    EXPECT_EQ(log.Text(), "");
}

TEST(ParserReaders, OnlyTheFirstValueMustBeAContainer) {
    tavrin::test::LogCapture direct;
    Parser fresh("[1]");
    EXPECT_TRUE(std::unique_ptr<Node>(fresh.ParseArray())->IsEmpty());
    Parser started("[1]");
    started._first = false;
    EXPECT_EQ(std::unique_ptr<Node>(started.ParseArray())->Serialize(), "[1]");

    tavrin::test::LogCapture log;
    Parser parser("5 [1]");
    const std::unique_ptr<Node> refused(parser.ParseValue());
    EXPECT_TRUE(refused->IsEmpty());
    EXPECT_TRUE(parser._first);  // a refused value leaves the rule in force

    Parser nested(" [\"x\"] 5");
    const std::unique_ptr<Node> array(nested.ParseValue());
    EXPECT_FALSE(nested._first);
    const std::unique_ptr<Node> scalar(nested.ParseValue());
    EXPECT_EQ(scalar->As<long long>(), 5);
}

TEST(NodeDeserialize, ReplacesTheWholeContentOnlyOnSuccess) {
    tavrin::test::LogCapture log;
    Node node;
    ASSERT_TRUE(node.Deserialize("{\"a\":1,\"b\":[true]}"));
    ASSERT_TRUE(node.Deserialize(std::string("[2]")));
    EXPECT_EQ(node.Serialize(), "[2]");

    EXPECT_FALSE(node.Deserialize("[2,"));
    EXPECT_FALSE(node.Deserialize("x"));
    EXPECT_FALSE(node.Deserialize(static_cast<const char*>(nullptr)));
    EXPECT_EQ(node.Serialize(), "[2]");
    EXPECT_NE(log.Text(), "");
}

TEST(NodeDeserialize, StringTextIsReadUpToItsFirstNul) {
    Node node;
    ASSERT_TRUE(node.Deserialize(std::string("[1]\0[[[", 7)));
    EXPECT_EQ(node.Serialize(), "[1]");
    tavrin::test::LogCapture log;
    EXPECT_FALSE(node.Deserialize(std::string("[\"a\0b\"]", 7)));
    EXPECT_EQ(node.Serialize(), "[1]");
}

TEST(NodeDeserialize, NullTextFailsLikeAnEmptyText) {
    std::string nullLog, emptyLog;
    {
        tavrin::test::LogCapture log;
        Node node;
        EXPECT_FALSE(node.Deserialize(static_cast<const char*>(nullptr)));
        nullLog = log.Text();
    }
    {
        tavrin::test::LogCapture log;
        Node node;
        EXPECT_FALSE(node.Deserialize(""));
        emptyLog = log.Text();
    }
    EXPECT_EQ(nullLog, emptyLog);
    EXPECT_NE(nullLog, "");
}

}  // namespace
