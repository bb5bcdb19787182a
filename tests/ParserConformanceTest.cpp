// Runs every case of tests/conformance/parser (see the README there): the
// result of parsing each input, or the exact log of its failure, and checks
// that the cases together reach every logging statement of the parser.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/LogCapture.h"
#include "support/SourceLine.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;

const char* const kParserSource = "plugin/json/Parser.cpp";
const std::string kCaseDir = std::string(TAVRIN_SOURCE_DIR) + "/tests/conformance/parser";

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(separator, start)) != std::string::npos; start = end + 1)
        pieces.push_back(text.substr(start, end - start));
    pieces.push_back(text.substr(start));
    return pieces;
}

// A message text as it stands in the source: quoted, with escapes.
std::string AsLiteral(const std::string& text) {
    std::string literal = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') literal += '\\';
        literal += c;
    }
    return literal + "\"";
}

// The parser's source, read once.
const std::vector<std::string>& ParserSourceLines() {
    static const std::vector<std::string> lines =
        SplitLines(tavrin::test::ReadFile(std::string(TAVRIN_SOURCE_DIR) + "/" + kParserSource));
    return lines;
}

// The line (1-based) of the `occurrence`-th line containing `needle` after
// the start of Parser::`function`; 0 when there is none.
int LineInFunction(const std::string& function, const std::string& needle, int occurrence) {
    const auto& lines = ParserSourceLines();
    const std::string definition = "Parser::" + function + "(";
    std::size_t i = 0;
    while (i < lines.size() && lines[i].find(definition) == std::string::npos) ++i;
    for (; i < lines.size(); ++i)
        if (lines[i].find(needle) != std::string::npos && --occurrence == 0)
            return static_cast<int>(i + 1);
    return 0;
}

struct ExpectedLine {
    int line;
    std::string text;
};

// One expected log line "Function[#N]|piece|piece...", with ${text} for the
// whole source text and ${bound} for the default nesting bound.
ExpectedLine ResolveLogLine(const std::string& lineForm, const std::string& source) {
    std::vector<std::string> pieces = Split(lineForm, '|');
    std::string function = pieces.front();
    int occurrence = 1;
    if (const auto hash = function.find('#'); hash != std::string::npos) {
        occurrence = std::stoi(function.substr(hash + 1));
        function.resize(hash);
    }
    std::string message;
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        if (pieces[i] == "${text}")
            message += source;
        else if (pieces[i] == "${bound}")
            message += std::to_string(Parser::kDefaultMaxDepth);
        else
            message += pieces[i];
    }
    const int line = LineInFunction(function, AsLiteral(pieces.at(1)), occurrence);
    return {line, tavrin::test::RedLine(kParserSource, line, function, message)};
}

using Reader = Node* (Parser::*)();

Reader ReaderNamed(const std::string& name) {
    if (name == "ParseValue") return &Parser::ParseValue;
    if (name == "ParseArray") return &Parser::ParseArray;
    if (name == "ParseObject") return &Parser::ParseObject;
    if (name == "ParseString") return &Parser::ParseString;
    if (name == "ParseInt64") return &Parser::ParseInt64;
    if (name == "ParseDouble") return &Parser::ParseDouble;
    if (name == "ParseFraction") return &Parser::ParseFraction;
    if (name == "ParseBool") return &Parser::ParseBool;
    ADD_FAILURE() << "no reader " << name;
    return &Parser::ParseValue;
}

struct Outcome {
    bool ok;
    std::string serialized;
    std::string log;
};

// Deserialize into a node that holds a sentinel string, or call one reader.
Outcome Run(const char* text, const std::string& via) {
    tavrin::test::LogCapture capture;
    Node target(std::string("sentinel"));
    bool ok;
    if (via.empty()) {
        ok = target.Deserialize(text);
    } else {
        Parser parser(text);
        const std::unique_ptr<Node> result((parser.*ReaderNamed(via))());
        ok = !result->IsEmpty();
        if (ok) target = *result;
    }
    std::string log = capture.Text();
    return {ok, target.Serialize(), log};
}

std::vector<std::string> CaseNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(kCaseDir))
        if (entry.path().extension() == ".expect") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

// Runs one case; adds the source lines of its expected log lines to `reached`.
void CheckCase(const std::string& name, std::set<int>& reached) {
    SCOPED_TRACE("case " + name);
    const std::string input = tavrin::test::ReadFile(kCaseDir + "/" + name + ".json");
    const std::vector<std::string> expect =
        SplitLines(tavrin::test::ReadFile(kCaseDir + "/" + name + ".expect"));
    ASSERT_FALSE(expect.empty());
    const std::vector<std::string> header = Split(expect.front(), ' ');
    const std::string via = header.size() == 3 && header[1] == "via" ? header[2] : "";
    const std::string source(input.c_str());
    const Outcome outcome = Run(input.c_str(), via);
    if (header.front() == "ok") {
        ASSERT_EQ(expect.size(), 2u);
        EXPECT_TRUE(outcome.ok);
        EXPECT_EQ(outcome.log, "");
        EXPECT_EQ(outcome.serialized, expect[1]);
        if (via.empty()) {
            EXPECT_EQ(Run(outcome.serialized.c_str(), "").serialized, expect[1]);
        }
        return;
    }
    ASSERT_EQ(header.front(), "fail");
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.serialized, "\"sentinel\"");
    std::string log;
    for (std::size_t i = 1; i < expect.size(); ++i) {
        const ExpectedLine line = ResolveLogLine(expect[i], source);
        EXPECT_NE(line.line, 0) << "no source line for " << expect[i];
        reached.insert(line.line);
        log += line.text;
    }
    EXPECT_EQ(outcome.log, log);
}

TEST(ParserConformance, EveryCaseGivesItsTreeOrItsExactLog) {
    const std::vector<std::string> names = CaseNames();
    ASSERT_GE(names.size(), 100u);
    std::set<int> reached;
    for (const std::string& name : names) CheckCase(name, reached);

    // Every logging statement of the parser is reached by some case, except
    // the read past the end, which no reader makes (see the cursor tests).
    const int pastEnd = tavrin::test::SourceLine(kParserSource, "\" unexpected _token!\"");
    const auto& lines = ParserSourceLines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int line = static_cast<int>(i + 1);
        if (lines[i].find("TAVRIN_LOG_ERROR(") != std::string::npos && line != pastEnd) {
            EXPECT_EQ(reached.count(line), 1u) << "no case reaches " << lines[i];
        }
    }
}

}  // namespace
