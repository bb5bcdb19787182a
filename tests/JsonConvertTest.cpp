// The two conversion functions: the data-driven cases (the attribute-set
// texts made from JSON documents and the log lines of the walk), the "p1"
// address forms of the command and its refusals, the deepest documents
// converted on a small stack, and memory running out.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/AttrSet.h"
#include "json/Parser.h"
#include "support/ConvertFixture.h"
#include "support/DeepDocuments.h"
#include "support/FailEachAllocation.h"
#include "support/SmallStack.h"

namespace {

using tavrin::base::AttrSet;
using tavrin::test::HexAddress;
using tavrin::test::SetText;

using JsonConvert = tavrin::test::ConvertFixture;

// Every case of tests/conformance/convert (see the README there): the text
// written and, where the case gives it, the exact log of the walk.
TEST_F(JsonConvert, EveryCaseGivesItsTextAndItsLog) {
    const std::string dir = std::string(TAVRIN_SOURCE_DIR) + "/tests/conformance/convert/";
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir))
        if (entry.path().extension() == ".expect") names.push_back(entry.path().stem().string());
    ASSERT_GE(names.size(), 25u);
    for (const std::string& name : names) {
        const std::string document = tavrin::test::ReadFile(dir + name + ".json");
        std::istringstream expect(tavrin::test::ReadFile(dir + name + ".expect"));
        std::string text, line, walk;
        std::getline(expect, text);
        bool logged = false;
        for (; std::getline(expect, line); logged = true) {
            const std::string message = line.substr(line.find('|') + 1);
            walk += line.rfind("red|", 0) == 0 ? Red("convert", message) : Cyan("convert", message);
        }
        _log.Reset();
        std::string out;
        EXPECT_TRUE(Convert(document.c_str(), out)) << name;
        EXPECT_EQ(out, text) << name;
        const char* outer = "convertJsonToAttrSetString";
        if (logged) {
            EXPECT_EQ(_log.Lines(), Cyan(outer, "src=" + document) + Cyan(outer, "") + walk + Cyan(outer, "")) << name;
        }
    }
}

// The command checks "p0", "p1" (an address in hexadecimal, with or without
// "0x" or "0X", after blanks or a sign) and the text in that order; nothing
// is written on a refusal.
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
        // A refusal of the command's own is its only line; a refused text
        // logs the conversion's source line first, and no walker line.
        EXPECT_EQ(log.size() == lastLine.size(), lastLine != refused);
        if (lastLine == refused) {
            EXPECT_EQ(log.rfind(Cyan(outer.c_str(), std::string("src=") + text), 0), 0u);
        }
        EXPECT_EQ(log.find("/convert:"), std::string::npos);
    }
    EXPECT_EQ(out, "kept");
    for (const char* prefix : {"0x", "", " \t0X", "+0x"}) {
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

// Each document with the text it converts to: "-" converts, its text not
// compared; "" is refused.
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

// Memory running out at any allocation of either function lets the
// std::bad_alloc through, leaves the output as it was and loses nothing.
TEST_F(JsonConvert, MemoryRunningOutAtAnyAllocationLeavesTheOutputAndNothingBehind) {
    const char* document = R"({"a":[1,2.5,"a text longer than inline ones",true,{"k":{"x":1}}],"o":{"p":[3,4]},"f":1/3})";
    std::string expected;
    ASSERT_TRUE(Convert(document, expected));
    const auto failEachAllocation = [&](const std::function<bool(std::string&)>& convert) {
        tavrin::test::FailEachAllocationInTurn([&] {
            const tavrin::test::LogCapture log;
            std::string out = "kept";
            try {
                EXPECT_TRUE(convert(out));
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(out, "kept");
                throw;
            }
            EXPECT_EQ(out, expected);
        });
    };
    failEachAllocation([&](std::string& out) { return Convert(document, out); });
    failEachAllocation([&](std::string& out) {
        AttrSet args;
        args.Add("p0", document);
        args.Add("p1", HexAddress(&out).c_str());
        return Command(args);
    });
}

}  // namespace
