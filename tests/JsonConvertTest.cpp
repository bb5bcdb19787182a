// "convert_json_to_attrset_string": the attribute-set texts made from JSON
// documents and every log line of the walkers.
#include <gtest/gtest.h>

#include <string>

#include "base/AttrSet.h"
#include "support/ConvertFixture.h"

namespace {

using tavrin::base::AttrSet;
using tavrin::test::SetText;

class JsonConvertTest : public tavrin::test::ConvertFixture {
protected:
    // What the walker stores under the key "k" for the JSON value `value`.
    std::string StoredUnderK(const std::string& value) {
        std::string out;
        const std::string document = "{\"k\":" + value + "}";
        EXPECT_TRUE(Convert(document.c_str(), out)) << document;
        AttrSet result(out.c_str());
        const char* stored = result.Get("k");
        return stored != nullptr ? stored : "<absent>";
    }
    // The whole result text for the document {"k": value}.
    std::string TextUnderK(const std::string& value) {
        std::string out;
        const std::string document = "{\"k\":" + value + "}";
        EXPECT_TRUE(Convert(document.c_str(), out)) << document;
        return out;
    }
};

TEST_F(JsonConvertTest, WorkedExamplesUnderAKey) {
    AttrSet members;
    members.Add("a", "1");
    members.Add("b", "true");
    EXPECT_EQ(TextUnderK("[1,2,3]"), SetText("k", "1+2+3"));
    EXPECT_EQ(TextUnderK("[\"a\",\"b\"]"), SetText("k", "{{a}+{b}}"));
    EXPECT_EQ(TextUnderK("[[1,2],[3]]"), SetText("k", "{{1+2}+{3}}"));
    EXPECT_EQ(TextUnderK("[1,[\"x\"]]"), SetText("k", "1+{{x}}"));
    EXPECT_EQ(TextUnderK("{\"a\":1,\"b\":true}"), SetText("k", members.ToString(false)));
    EXPECT_EQ(TextUnderK("[{\"a\":1}]"), SetText("k", "{{" + SetText("a", "1") + "}}"));
    EXPECT_EQ(TextUnderK("[1.5,2]"), SetText("k", "+2"));
    EXPECT_EQ(TextUnderK("\"text\""), SetText("k", "text"));
    EXPECT_EQ(TextUnderK("2.5"), AttrSet().ToString(false));
}

TEST_F(JsonConvertTest, EdgeCasesUnderAKey) {
    EXPECT_EQ(StoredUnderK("[]"), "");
    EXPECT_EQ(StoredUnderK("[[]]"), "{{}}");
    EXPECT_EQ(StoredUnderK("[1,[],2]"), "1+{}+2");
    EXPECT_EQ(StoredUnderK("{}"), AttrSet().ToString(false));
    EXPECT_EQ(StoredUnderK("\"a+{b}\""), "a+{b}");
    EXPECT_EQ(StoredUnderK("[true,\"x\"]"), "true+{x}");
    EXPECT_EQ(StoredUnderK("[\"x\",true]"), "{{x}+true}");
    EXPECT_EQ(StoredUnderK("[2.5,1,3/4]"), "+1+");
    EXPECT_EQ(StoredUnderK("[\"s\",-3,false,[],{},1/2]"),
              "{{s}+-3+false+{}+{" + AttrSet().ToString(false) + "}+}");
    EXPECT_EQ(StoredUnderK("-9223372036854775808"), "-9223372036854775808");
    EXPECT_EQ(StoredUnderK("false"), "false");
}

TEST_F(JsonConvertTest, NestedObjectsNestSetTextsWithoutKeyPaths) {
    std::string out;
    ASSERT_TRUE(Convert("{\"a\":{\"b\":{\"c\":1}}}", out));
    EXPECT_EQ(out, SetText("a", SetText("b", SetText("c", "1"))));
}

TEST_F(JsonConvertTest, ResultOfADocumentIsTheRootValue) {
    std::string out;
    ASSERT_TRUE(Convert("[1,2]", out));
    EXPECT_EQ(out, "1+2");
    ASSERT_TRUE(Convert("{\"a\":1,\"b\":\"x\"}", out));
    AttrSet expected;
    expected.Add("a", "1");
    expected.Add("b", "x");
    EXPECT_EQ(out, expected.ToString(false));
    ASSERT_TRUE(Convert("[\"x\"]", out));
    EXPECT_EQ(out, "{{x}}");
}

TEST_F(JsonConvertTest, LogOfAnArrayUnderAKey) {
    const char* document = "{\"k\":[1,2]}";
    std::string out;
    ASSERT_TRUE(Convert(document, out));
    const std::string root = SetText("k", "1+2");
    EXPECT_EQ(_log.Text(),
              Cyan("convertJsonToAttrSetString", "\"src=\"", std::string("src=") + document) +
                  Cyan("convertJsonToAttrSetString", "TAVRIN_LOG_INFO();", "", 1) +
                  Red("convert", "TAVRIN_LOG_ERROR();", "", 1) +
                  Cyan("convert", "TAVRIN_LOG_INFO(list)", "1+2") +
                  Cyan("convert", "TAVRIN_LOG_INFO(ap.Get(key))", "1+2") +
                  Cyan("convert", "TAVRIN_LOG_INFO(text)", root) +
                  Cyan("convert", "TAVRIN_LOG_INFO(ap.Get(key))", root) +
                  Cyan("convertJsonToAttrSetString", "TAVRIN_LOG_INFO();", "", 2));
    EXPECT_EQ(out, root);
}

TEST_F(JsonConvertTest, LogOfTheListWalker) {
    std::string out;
    ASSERT_TRUE(Convert("{\"k\":[[1],{\"a\":2},2.5]}", out));
    const std::string list = "{1}+{" + SetText("a", "2") + "}+";
    const std::string root = SetText("k", "{" + list + "}");
    const std::string walk =
        Red("convert", "TAVRIN_LOG_ERROR();", "", 1) + Red("convert", "TAVRIN_LOG_ERROR();", "", 1) +
        Cyan("convert", "TAVRIN_LOG_INFO(list)", "1") +
        Cyan("convert", "TAVRIN_LOG_INFO(text)", SetText("a", "2")) +
        Red("convert", "TAVRIN_LOG_ERROR();", "", 2) +
        Cyan("convert", "TAVRIN_LOG_INFO(list)", list) +
        Cyan("convert", "TAVRIN_LOG_INFO(ap.Get(key))", "{" + list + "}") +
        Cyan("convert", "TAVRIN_LOG_INFO(text)", root);
    EXPECT_NE(_log.Text().find(walk), std::string::npos) << _log.Text();
    EXPECT_EQ(out, root);
}

TEST_F(JsonConvertTest, LogFollowsTheNestingInnermostLevelFirst) {
    const char* document = "{\"o\":{\"l\":[[2],\"s\"]},\"n\":1}";
    std::string out;
    ASSERT_TRUE(Convert(document, out));
    const std::string list = "{2}+{s}";
    const std::string inner = SetText("l", "{" + list + "}");
    AttrSet root;
    root.Add("o", inner.c_str());
    root.Add("n", "1");
    const std::string arrayMet = Red("convert", "TAVRIN_LOG_ERROR();", "", 1);
    EXPECT_EQ(_log.Text(),
              Cyan("convertJsonToAttrSetString", "\"src=\"", std::string("src=") + document) +
                  Cyan("convertJsonToAttrSetString", "TAVRIN_LOG_INFO();", "", 1) + arrayMet +
                  arrayMet + Cyan("convert", "TAVRIN_LOG_INFO(list)", "2") +
                  Cyan("convert", "TAVRIN_LOG_INFO(list)", list) +
                  Cyan("convert", "TAVRIN_LOG_INFO(ap.Get(key))", "{" + list + "}") +
                  Cyan("convert", "TAVRIN_LOG_INFO(text)", inner) +
                  Cyan("convert", "TAVRIN_LOG_INFO(ap.Get(key))", inner) +
                  Cyan("convert", "TAVRIN_LOG_INFO(text)", root.ToString(false)) +
                  Cyan("convert", "TAVRIN_LOG_INFO(ap.Get(key))", root.ToString(false)) +
                  Cyan("convertJsonToAttrSetString", "TAVRIN_LOG_INFO();", "", 2));
    EXPECT_EQ(out, root.ToString(false));
}

TEST_F(JsonConvertTest, ValuesNotConvertedUnderAKeyLogOneRedLineEach) {
    const char* document = "{\"d\":2.5,\"f\":30000/1001,\"n\":1}";
    std::string out;
    ASSERT_TRUE(Convert(document, out));
    const std::string root = SetText("n", "1");
    const std::string skipped = Red("convert", "TAVRIN_LOG_ERROR();", "", 2);
    EXPECT_EQ(_log.Text(),
              Cyan("convertJsonToAttrSetString", "\"src=\"", std::string("src=") + document) +
                  Cyan("convertJsonToAttrSetString", "TAVRIN_LOG_INFO();", "", 1) + skipped +
                  skipped + Cyan("convert", "TAVRIN_LOG_INFO(text)", root) +
                  Cyan("convert", "TAVRIN_LOG_INFO(ap.Get(key))", root) +
                  Cyan("convertJsonToAttrSetString", "TAVRIN_LOG_INFO();", "", 2));
    EXPECT_EQ(out, root);
}

TEST_F(JsonConvertTest, UnparsableTextLeavesTheOutputUntouched) {
    const char* document = "{\"a\":";
    std::string out = "earlier content";
    EXPECT_FALSE(Convert(document, out));
    EXPECT_EQ(out, "earlier content");
    const std::string& log = _log.Text();
    const std::string first =
        Cyan("convertJsonToAttrSetString", "\"src=\"", std::string("src=") + document);
    const std::string last =
        Red("convertJsonToAttrSetString", "\"!node.Deserialize(src)\"", "!node.Deserialize(src)");
    EXPECT_EQ(log.substr(0, first.size()), first);
    ASSERT_GE(log.size(), last.size());
    EXPECT_EQ(log.substr(log.size() - last.size()), last);
}

TEST_F(JsonConvertTest, NullArgumentsAreRefused) {
    std::string out = "kept";
    EXPECT_FALSE((*_convert)(nullptr, &out));
    EXPECT_FALSE((*_convert)("[1]", nullptr));
    EXPECT_EQ(out, "kept");
    EXPECT_EQ(_log.Text(), Red("convertJsonToAttrSetString", "\"!src\" : \"!out\"", "!src") +
                               Red("convertJsonToAttrSetString", "\"!src\" : \"!out\"", "!out"));
}

}  // namespace
