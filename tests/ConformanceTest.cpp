// Runs the data-driven corpora: tests/conformance/parser (the tree parsed
// from each input, or the exact log and offset of its failure; see the
// README there)
// and tests/conformance/legacy (the text the json:: reader and writer make).
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/LogCapture.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using tavrin::test::ReadFile;

const char kSource[] = "plugin/json/Parser.cpp";
const std::string kCases = std::string(TAVRIN_SOURCE_DIR) + "/tests/conformance/";

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> pieces;
    std::istringstream in(text);
    for (std::string piece; std::getline(in, piece, separator);) pieces.push_back(piece);
    return pieces;
}

// The names of the cases in a corpus folder, sorted.
std::vector<std::string> CaseNames(const std::string& corpus) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(kCases + corpus))
        if (entry.path().extension() == ".expect") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

// One expected log line "Function|piece|piece...", with ${text} for the
// whole source text and ${bound} for the default nesting bound.
std::string ExpectedLine(const std::string& form, const std::string& source) {
    const std::vector<std::string> pieces = Split(form, '|');
    std::string message;
    for (std::size_t i = 1; i < pieces.size(); ++i)
        message += pieces[i] == "${text}"    ? source
                   : pieces[i] == "${bound}" ? std::to_string(Parser::kDefaultMaxDepth)
                                             : pieces[i];
    return tavrin::test::RedLine(kSource, pieces.front(), message);
}

Node* Read(Parser& parser, const std::string& reader) {
    using Reader = Node* (Parser::*)();
    static const std::pair<const char*, Reader> kReaders[] = {
        {"ParseValue", &Parser::ParseValue},   {"ParseArray", &Parser::ParseArray},
        {"ParseObject", &Parser::ParseObject}, {"ParseString", &Parser::ParseString},
        {"ParseInt64", &Parser::ParseInt64},   {"ParseDouble", &Parser::ParseDouble},
        {"ParseFraction", &Parser::ParseFraction}, {"ParseBool", &Parser::ParseBool}};
    for (const auto& [name, read] : kReaders)
        if (reader == name) return (parser.*read)();
    ADD_FAILURE() << "no reader " << reader;
    return new Node();
}

struct Outcome {
    bool ok;
    std::string serialized;
    std::string log;  // as written, line numbers included
    int rest;         // the characters a reader left unread after its value
};

// Deserialize into a node that holds a sentinel string, or call one reader.
Outcome Run(const char* text, const std::string& via) {
    tavrin::test::LogCapture capture;
    Node target(std::string("sentinel"));
    Parser parser(text);
    bool ok = via.empty() && target.Deserialize(text);
    if (!via.empty()) {
        const std::unique_ptr<Node> result(Read(parser, via));
        ok = !result->IsEmpty();
        if (ok) target = *result;
    }
    return {ok, target.Serialize(), capture.Text(), static_cast<int>(std::strlen(text)) - parser._pos - 1};
}

// Runs one parser case; gives the log it wrote.
std::string CheckCase(const std::string& name) {
    SCOPED_TRACE("case " + name);
    const std::string dir = kCases + "parser/";
    const std::string input = ReadFile(dir + name + ".json");
    const std::vector<std::string> expect = Split(ReadFile(dir + name + ".expect"), '\n');
    const std::vector<std::string> header = Split(expect.at(0), ' ');
    std::map<std::string, std::string> option;  // via READER, at OFFSET, rest COUNT
    for (std::size_t i = 1; i + 1 < header.size(); i += 2) option[header[i]] = header[i + 1];
    const std::string via = option["via"];
    const Outcome outcome = Run(input.c_str(), via);
    if (header.front() == "ok") {
        EXPECT_EQ(expect.size(), 2u);
        EXPECT_TRUE(outcome.ok);
        EXPECT_EQ(outcome.log, "");
        EXPECT_EQ(outcome.serialized, expect.at(1));
        if (option.count("rest") != 0) {
            EXPECT_EQ(outcome.rest, std::stoi(option["rest"]));
        }
        if (via.empty()) {
            EXPECT_EQ(Run(outcome.serialized.c_str(), "").serialized, expect[1]);
        }
        return outcome.log;
    }
    EXPECT_EQ(header.front(), "fail");
    EXPECT_FALSE(outcome.ok);
    if (option.count("at") != 0) {
        tavrin::test::LogCapture quiet;
        Parser parser(input.c_str());
        const std::unique_ptr<Node> result(parser.ParseValue());
        EXPECT_EQ(parser.FailureOffset(), std::stoi(option["at"]));
    }
    EXPECT_EQ(outcome.serialized, "\"sentinel\"");
    std::string log;
    for (std::size_t i = 1; i < expect.size(); ++i) log += ExpectedLine(expect[i], input.c_str());
    EXPECT_EQ(tavrin::test::Masked(outcome.log), log);
    return outcome.log;
}

// Every case; then the one check of line numbers in the project: each line
// the parser logged names the line of a logging statement of Parser.cpp, and
// together the cases reach all of them but the read past the end, which only
// direct cursor use makes (see ParserTest.cpp).
TEST(ParserConformance, EveryCaseGivesItsTreeOrItsExactLog) {
    const std::vector<std::string> names = CaseNames("parser");
    ASSERT_GE(names.size(), 140u);
    std::set<int> reached;
    for (const std::string& name : names) {
        const std::string log = CheckCase(name);
        static const std::regex kNumber("Parser\\.cpp/([0-9]+)/");
        for (std::sregex_iterator it(log.begin(), log.end(), kNumber), end; it != end; ++it)
            reached.insert(std::stoi((*it)[1]));
    }
    const std::vector<std::string> lines = Split(ReadFile(std::string(TAVRIN_SOURCE_DIR) + "/" + kSource), '\n');
    std::size_t statements = 0;
    for (const std::string& line : lines) statements += line.find("TAVRIN_LOG_ERROR(") != std::string::npos;
    for (int line : reached)
        EXPECT_NE(lines.at(static_cast<std::size_t>(line - 1)).find("TAVRIN_LOG_ERROR("), std::string::npos)
            << "Parser.cpp:" << line << " logs no line";
    EXPECT_EQ(reached.size() + 1, statements) << "a logging statement of the parser is reached by no case";
}

// Every NAME.json under tests/conformance/legacy reads and writes back as
// NAME.expect says (its text up to a final line break; "null" when the
// reader fails).
TEST(LegacyConformance, EveryCaseReadsBackAsExpected) {
    const std::vector<std::string> names = CaseNames("legacy");
    ASSERT_GE(names.size(), 50u);
    for (const std::string& name : names) {
        std::string expected = ReadFile(kCases + "legacy/" + name + ".expect");
        if (!expected.empty() && expected.back() == '\n') expected.pop_back();
        const json::Value value = json::Deserialize(ReadFile(kCases + "legacy/" + name + ".json"));
        EXPECT_EQ(value.GetType() == json::NullVal ? "null" : json::Serialize(value), expected) << name;
    }
}

}  // namespace
