// Where the parser reports that it gave up (Parser::FailureOffset).
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/LogCapture.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;

struct Broken {
    const char* what;
    std::string text;
    int offset;  // of the first character the parser could not accept
};

const Broken kBroken[] = {
    {"string without its closing quote", "{\"a\":\"x}", 8},
    {"key without its opening quote", "{a:1}", 1},
    {"raw line feed in a string", "[\"a\nb\"]", 3},
    {"unknown escape", "[\"\\q\"]", 3},
    {"array without a comma", "[1 2]", 3},
    {"object without a comma", "{\"a\":1\n \"b\":2}", 8},
    {"blank before the colon", "{\"a\" :1}", 4},
    {"digit after a leading zero", "[007]", 2},
    {"no digit after the point", "[1.]", 3},
    {"no exponent digit", "[1.5e+]", 6},
    {"minus alone", "[-]", 2},
    {"fraction without a denominator", "[1/]", 3},
    {"blank inside a fraction", "[1 /2]", 2},
    {"unknown literal", "[1, null]", 4},
    {"misspelt literal", "{\"a\":tru}", 8},
    {"trailing comma", "[1,]", 3},
    {"truncated after a comma", "{\"a\":1,", 7},
    {"truncated after a colon", "{\"a\":\n", 6},
    {"truncated array", "[1,2", 4},
    {"top-level number", "  5", 2},
    {"top-level string", "\"x\"", 0},
    {"empty text", "", 0},
    {"blanks only", "\n  ", 3},
    {"nested beyond the bound", std::string(Parser::kDefaultMaxDepth, '[') + "[]", 256},
    {"object beyond the bound", std::string(Parser::kDefaultMaxDepth, '[') + " {}", 257},
};

TEST(ParserPosition, IsTheFirstCharacterThatCouldNotBeAccepted) {
    for (const Broken& broken : kBroken) {
        tavrin::test::LogCapture log;
        Parser parser(broken.text.c_str());
        const std::unique_ptr<Node> result(parser.ParseValue());
        EXPECT_TRUE(result->IsEmpty()) << broken.what;
        EXPECT_NE(log.Text(), "") << broken.what;
        EXPECT_EQ(parser.FailureOffset(), broken.offset) << broken.what;
    }
}

TEST(ParserPosition, FollowsTheParsersOwnBound) {
    tavrin::test::LogCapture log;
    Parser parser("{\"a\":[[1]]}");
    parser.SetMaxDepth(2);
    const std::unique_ptr<Node> result(parser.ParseValue());
    EXPECT_TRUE(result->IsEmpty());
    EXPECT_EQ(parser.FailureOffset(), 6);
}

}  // namespace
