// The parser's cursor operations, type detection and copies.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <typeinfo>

#include "base/Fraction.h"
#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/LogCapture.h"
#include "support/SourceLine.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using tavrin::test::LogCapture;
using tavrin::test::RedLine;
using tavrin::test::SourceLine;

const char* const kSource = "plugin/json/Parser.cpp";

std::string PastEndLine() {
    return RedLine(kSource, SourceLine(kSource, "\" unexpected _token!\""), "GetNextChar",
                   " unexpected _token!");
}

TEST(ParserCursor, StartsBeforeTheFirstCharacter) {
    const char* text = "[1]";
    const Parser parser(text);
    EXPECT_EQ(parser._text, text);
    EXPECT_EQ(parser._pos, -1);
    EXPECT_EQ(parser._token, ' ');
    EXPECT_EQ(parser._buffer, "");
    EXPECT_TRUE(parser._first);
    EXPECT_EQ(parser.MaxDepth(), Parser::kDefaultMaxDepth);

    const Parser blank;
    EXPECT_STREQ(blank._text, " ");
    EXPECT_EQ(blank._pos, -1);
    EXPECT_TRUE(blank._first);
}

TEST(ParserCursor, ReadsUpToTheTerminatorAndLogsEveryReadPastIt) {
    LogCapture log;
    Parser parser("a\xE9");
    EXPECT_EQ(parser.GetNextChar(), 'a');
    EXPECT_EQ(parser.GetNextChar(), 0xE9);
    EXPECT_EQ(parser.GetNextChar(), 0);
    EXPECT_EQ(parser._pos, 2);
    EXPECT_TRUE(parser.EOL());
    EXPECT_EQ(log.Text(), "");

    EXPECT_EQ(parser.GetNextChar(), 0);
    EXPECT_EQ(parser.GetNextChar(), 0);
    EXPECT_EQ(parser._pos, 2);
    EXPECT_EQ(parser._token, '\0');
    EXPECT_EQ(log.Text(), PastEndLine() + PastEndLine());

    // A step back makes the terminator readable once more without a line.
    log.Reset();
    parser.Retract();
    EXPECT_EQ(parser.GetNextChar(), 0);
    EXPECT_EQ(log.Text(), "");
}

TEST(ParserCursor, RetractStepsBackAndBlanksTheToken) {
    Parser parser("xy");
    parser.GetNextChar();
    parser.GetNextChar();
    parser.Retract();
    EXPECT_EQ(parser._pos, 0);
    EXPECT_EQ(parser._token, ' ');
    EXPECT_FALSE(parser.EOL());
    EXPECT_EQ(parser.GetNextChar(), 'y');
}

TEST(ParserCursor, ConcatAppendsTheCurrentCharacter) {
    Parser parser("ab");
    parser.GetNextChar();
    parser.Concat();
    parser.GetNextChar();
    parser.Concat();
    parser.Concat();
    EXPECT_EQ(parser._buffer, "abb");
}

TEST(ParserCursor, SkipSpacesStopsBeforeTheFirstOtherCharacterKeepingIt) {
    Parser parser(" \t\r\n\f x");
    parser.SkipSpaces();
    EXPECT_EQ(parser._pos, 3);
    EXPECT_EQ(parser._token, '\f');
    EXPECT_EQ(parser.GetNextChar(), '\f');

    Parser vertical("\v");
    vertical.SkipSpaces();
    EXPECT_EQ(vertical.GetNextChar(), '\v');

    // At the end the token is the terminator, so EOL() tells it.
    Parser ending("  ");
    ending.SkipSpaces();
    EXPECT_TRUE(ending.EOL());
    EXPECT_EQ(ending._pos, 1);
    EXPECT_EQ(ending.GetNextChar(), 0);
}

TEST(ParserCursor, ParseSpecificMatchesLiterallyWithoutSteppingBack) {
    LogCapture log;
    Parser parser("abdz");
    EXPECT_FALSE(parser.ParseSpecific("abc"));
    EXPECT_EQ(log.Text(), RedLine(kSource, SourceLine(kSource, "\"_token error!\""),
                                  "ParseSpecific", "_token error!"));
    EXPECT_EQ(parser.GetNextChar(), 'z');

    log.Reset();
    Parser matching(" true");
    EXPECT_FALSE(matching.ParseSpecific("true"));  // no whitespace is skipped
    Parser word("true,");
    EXPECT_TRUE(word.ParseSpecific("true"));
    EXPECT_EQ(word._pos, 3);
    EXPECT_TRUE(word.ParseSpecific(""));
}

// The kind TypeDetect gives at the start of `text`, the cursor checked to
// be where it was.
const std::type_info* KindAtStart(const char* text) {
    Parser parser(text);
    const std::type_info* kind = parser.TypeDetect();
    EXPECT_EQ(parser._pos, -1) << text;
    EXPECT_EQ(parser._token, ' ') << text;
    return kind;
}

bool IsKind(const std::type_info* kind, const std::type_info& expected) {
    return kind != nullptr && *kind == expected;
}

TEST(ParserTypeDetect, ClassifiesByFirstCharacterAndNumbersByLookAhead) {
    LogCapture log;
    EXPECT_TRUE(IsKind(KindAtStart("{"), typeid(Node::Object)));
    EXPECT_TRUE(IsKind(KindAtStart("["), typeid(Node::Array)));
    EXPECT_TRUE(IsKind(KindAtStart("\"a\""), typeid(std::string)));
    EXPECT_TRUE(IsKind(KindAtStart("t"), typeid(bool)));
    EXPECT_TRUE(IsKind(KindAtStart("fx"), typeid(bool)));
    EXPECT_TRUE(IsKind(KindAtStart("-7]"), typeid(long long)));
    EXPECT_TRUE(IsKind(KindAtStart("12"), typeid(long long)));
    EXPECT_TRUE(IsKind(KindAtStart("2.5]"), typeid(double)));
    EXPECT_TRUE(IsKind(KindAtStart("1e5]"), typeid(double)));
    EXPECT_TRUE(IsKind(KindAtStart("1E5}"), typeid(double)));
    EXPECT_TRUE(IsKind(KindAtStart("1/3]"), typeid(tavrin::base::Fraction)));
    EXPECT_TRUE(IsKind(KindAtStart("1 /3]"), typeid(tavrin::base::Fraction)));
    EXPECT_TRUE(IsKind(KindAtStart("1 2.5]"), typeid(double)));
    EXPECT_TRUE(IsKind(KindAtStart("1 \"x\" ab 2,3.5"), typeid(long long)));
    EXPECT_EQ(log.Text(), "");
}

TEST(ParserTypeDetect, LogsTheWholeTextWhenNoKindStartsHere) {
    const int line = SourceLine(kSource, "\"can't detect the type of\"");
    for (const char* text : {"", "null", "TRUE", "F", "+1", ".5", "\xC3\xA9", "}"}) {
        LogCapture log;
        EXPECT_EQ(KindAtStart(text), nullptr) << text;
        EXPECT_EQ(log.Text(), RedLine(kSource, line, "TypeDetect",
                                      std::string("can't detect the type of") + text +
                                          ",please check string format!"));
    }
}

// The kind of the number at every digit or "-" of `text` that follows a
// character that cannot belong to the same number, read left to right by
// one parser (as a parse does) or each by a fresh parser.
std::string KindsAlong(const std::string& text, bool fresh) {
    Parser shared(text.c_str());
    std::string kinds;
    for (int pos = 0; pos < static_cast<int>(text.size()); ++pos) {
        const char c = text[static_cast<std::size_t>(pos)];
        if (!((c >= '0' && c <= '9') || c == '-')) continue;
        Parser own(text.c_str());
        Parser& parser = fresh ? own : shared;
        parser._pos = pos - 1;
        const std::type_info* kind = parser.TypeDetect();
        kinds += kind == nullptr ? '?' : kind->name()[0];
    }
    return kinds;
}

TEST(ParserTypeDetect, CachedLookAheadGivesTheResultOfAFullScan) {
    std::mt19937 random(20261123);
    const std::string alphabet = "0123456789-- ,]}.eE/\"ax";
    for (int round = 0; round < 300; ++round) {
        std::string text;
        const int length = 1 + static_cast<int>(random() % 60);
        for (int i = 0; i < length; ++i) text += alphabet[random() % alphabet.size()];
        EXPECT_EQ(KindsAlong(text, false), KindsAlong(text, true)) << text;
    }
}

TEST(ParserTypeDetect, CacheFollowsTheCursorBackwardsAndToAnotherText) {
    Parser parser("1 2 3 ] 4.5");
    parser._pos = 3;  // "3"
    EXPECT_TRUE(IsKind(parser.TypeDetect(), typeid(long long)));
    parser._pos = -1;  // "1", before the scan that found "]"
    EXPECT_TRUE(IsKind(parser.TypeDetect(), typeid(long long)));
    parser._pos = 7;  // "4.5"
    EXPECT_TRUE(IsKind(parser.TypeDetect(), typeid(double)));
    parser._pos = 1;  // "2" again, now behind the last scan
    EXPECT_TRUE(IsKind(parser.TypeDetect(), typeid(long long)));

    parser._text = "1/2";
    parser._pos = -1;
    EXPECT_TRUE(IsKind(parser.TypeDetect(), typeid(tavrin::base::Fraction)));
}

TEST(ParserCopy, CopiesShareTheTextAndTheirOwnState) {
    const char* text = "[1,2]";
    Parser parser(text);
    parser.SetMaxDepth(7);
    parser.GetNextChar();
    parser.Concat();

    Parser copy(parser);
    EXPECT_EQ(copy._text, text);
    EXPECT_EQ(copy._pos, 0);
    EXPECT_EQ(copy._token, '[');
    EXPECT_EQ(copy._buffer, "[");
    EXPECT_EQ(copy.MaxDepth(), 7);
    EXPECT_EQ(copy.GetNextChar(), '1');
    EXPECT_EQ(parser.GetNextChar(), '1');  // the original's cursor did not move

    Parser assigned("{}");
    assigned = parser;
    EXPECT_EQ(assigned._text, text);
    EXPECT_EQ(assigned._pos, 1);
    EXPECT_EQ(assigned.GetNextChar(), ',');

    Parser& self = assigned;
    assigned = self;
    EXPECT_EQ(assigned._pos, 2);
    EXPECT_EQ(assigned._buffer, "[");
}

}  // namespace
