// The two conversion functions: the attribute-set texts made from JSON
// documents, the "p1" address forms of the command, every log line of the
// walkers, and the deepest documents converted on a small stack.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "base/AttrSet.h"
#include "json/Parser.h"
#include "support/ConvertFixture.h"
#include "support/DeepDocuments.h"
#include "support/SmallStack.h"

namespace {

using tavrin::base::AttrSet;
using tavrin::test::HexAddress;
using tavrin::test::SetText;

class JsonConvert : public tavrin::test::ConvertFixture {
protected:
    std::string Converted(const std::string& document) {
        std::string out;
        EXPECT_TRUE(Convert(document.c_str(), out)) << document;
        return out;
    }
    // The log of converting `document`: the outer function's lines around
    // the walkers' `walk`.
    static std::string Log(const std::string& document, const std::string& walk) {
        const char* outer = "convertJsonToAttrSetString";
        return Cyan(outer, "src=" + document) + Cyan(outer, "") + walk + Cyan(outer, "");
    }
};

TEST_F(JsonConvert, DocumentsGiveTheirTexts) {
    const std::string none = AttrSet().ToString(false);
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"[1,2]", "1+2"}, {"[\"x\"]", "{{x}}"}, {"{\"a\":1,\"b\":\"x\"}", SetText({{"a", "1"}, {"b", "x"}})},
        {"{\"a\":{\"b\":{\"c\":1}}}", SetText("a", SetText("b", SetText("c", "1")))},
        {"{\"k\":2.5}", none},
    };
    const std::vector<std::pair<std::string, std::string>> underK = {
        {"[1,2,3]", "1+2+3"}, {"[\"a\",\"b\"]", "{{a}+{b}}"}, {"[[1,2],[3]]", "{{1+2}+{3}}"},
        {"[1,[\"x\"]]", "1+{{x}}"}, {"{\"a\":1,\"b\":true}", SetText({{"a", "1"}, {"b", "true"}})},
        {"[{\"a\":1}]", "{{" + SetText("a", "1") + "}}"}, {"[1.5,2]", "+2"}, {"\"text\"", "text"},
        {"[]", ""}, {"[[]]", "{{}}"}, {"[1,[],2]", "1+{}+2"}, {"{}", none}, {"\"a+{b}\"", "a+{b}"},
        {"[true,\"x\"]", "true+{x}"}, {"[\"x\",true]", "{{x}+true}"}, {"[2.5,1,3/4]", "+1+"},
        {"[\"s\",-3,false,[],{},1/2]", "{{s}+-3+false+{}+{" + none + "}+}"},
        {"-9223372036854775808", "-9223372036854775808"}, {"false", "false"},
    };
    for (const auto& [document, text] : cases) EXPECT_EQ(Converted(document), text) << document;
    for (const auto& [value, text] : underK) EXPECT_EQ(Converted("{\"k\":" + value + "}"), SetText("k", text)) << value;
}

TEST_F(JsonConvert, WalkersLogEachLevelInnermostFirst) {
    const std::string red = Red("convert", "");  // an array met, or a value of a kind left out
    const auto info = [](const std::string& text) { return Cyan("convert", text); };
    const auto twice = [&info](const std::string& text) { return info(text) + info(text); };
    const std::string inner = SetText("l", "{{2}+{s}}"), walked = "{1}+{" + SetText("a", "2") + "}+";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"{\"k\":[1,2]}", red + twice("1+2") + twice(SetText("k", "1+2"))},
        {"{\"o\":{\"l\":[[2],\"s\"]},\"n\":1}", red + red + info("2") + info("{2}+{s}") + info("{{2}+{s}}") +
                                                    twice(inner) + twice(SetText({{"o", inner}, {"n", "1"}}))},
        {"{\"d\":2.5,\"f\":30000/1001,\"n\":1}", red + red + twice(SetText("n", "1"))},
        {"{\"k\":[[1],{\"a\":2},2.5]}", red + red + info("1") + info(SetText("a", "2")) + red + info(walked) +
                                            info("{" + walked + "}") + twice(SetText("k", "{" + walked + "}"))},
    };
    for (const auto& [document, walk] : cases) {
        _log.Reset();
        Converted(document);
        EXPECT_EQ(_log.Lines(), Log(document, walk)) << document;
    }
}

// The command checks "p0", "p1" (an address in hexadecimal, with or without
// "0x") and the text in that order; nothing is written on a refusal.
TEST_F(JsonConvert, RefusedArgumentsAndTextsLeaveTheOutputUntouched) {
    std::string out = "kept";
    const std::string address = HexAddress(&out, "0x"), outer = "convertJsonToAttrSetString";
    EXPECT_FALSE((*_convert)(nullptr, &out));
    EXPECT_FALSE((*_convert)("[1]", nullptr));
    EXPECT_EQ(_log.Lines(), Red(outer.c_str(), "!src") + Red(outer.c_str(), "!out"));
    const char* command = "cmdConvertJsonToAttrSetString";
    const std::string refused = Red(outer.c_str(), "!node.Deserialize(src)");
    const std::vector<std::tuple<const char*, const char*, std::string>> refusals = {
        {nullptr, nullptr, Red(command, "!src")}, {"[1]", nullptr, Red(command, "!ap.Get(\"p1\",out)")},
        {"not json", "0", Red(command, "!out")}, {"not json", "0x0", Red(command, "!out")},
        {"not json", "zz", Red(command, "!out")}, {"not json", "", Red(command, "!out")},
        {"[1,", address.c_str(), refused},
    };
    for (const auto& [text, p1, lastLine] : refusals) {
        AttrSet args;
        if (text != nullptr) args.Add("p0", text);
        if (p1 != nullptr) args.Add("p1", p1);
        _log.Reset();
        EXPECT_FALSE(Command(args));
        const std::string log = _log.Lines();
        EXPECT_EQ(log.substr(log.size() - std::min(log.size(), lastLine.size())), lastLine);
        // Only the command's own refusals are its only line; a refused text
        // logs the conversion's source line first and no walker line.
        EXPECT_EQ(log.size() == lastLine.size(), lastLine != refused);
        EXPECT_EQ(log.find("/convert:"), std::string::npos);
    }
    EXPECT_EQ(out, "kept");
    for (const char* prefix : {"0x", "0X", "", "  "}) {
        AttrSet args;
        args.Add("p0", "{\"a\":1,\"b\":[\"x\"]}");
        args.Add("p1", HexAddress(&out, prefix).c_str());
        _log.Reset();
        EXPECT_TRUE(Command(args)) << prefix;
        EXPECT_EQ(out, SetText({{"a", "1"}, {"b", "{{x}}"}})) << prefix;
        EXPECT_EQ(args.Size(), 2u);
        EXPECT_EQ(_log.Text().find("/cmdConvertJsonToAttrSetString:"), std::string::npos);
    }
}

TEST_F(JsonConvert, DeepestAdmittedDocumentsConvertOnASmallStack) {
    using namespace tavrin::test;
    const std::size_t bound = tavrin::plugin::json::Parser::kDefaultMaxDepth;
    for (const auto& [document, converted] : std::vector<std::pair<std::string, std::string>>{
             {NestedArrays(bound, "1"), std::string(bound, '{') + "1" + std::string(bound, '}')},
             {NestedObjects(bound), "-"}, {AlternatingNesting(bound), "-"}, {AlternatingNesting(bound + 1), ""}}) {
        bool ok = false;
        std::string out;
        ASSERT_TRUE(RunOnStack(256 * 1024, [&, &document = document] { ok = Convert(document.c_str(), out); }));
        EXPECT_EQ(ok, !converted.empty());
        if (converted != "-") {
            EXPECT_EQ(out, converted);
        }
    }
}

}  // namespace
