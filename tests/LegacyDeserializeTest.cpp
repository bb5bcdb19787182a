#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Hash.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "json/legacy/Value.h"

namespace {

std::vector<std::string> KeysOf(const json::Value& v) {
    std::vector<std::string> keys;
    for (const auto& entry : v.ToObject()) keys.push_back(entry.key);
    return keys;
}

}  // namespace

TEST(LegacyDeserialize, DepthMarkersTakeOneByte) {
    EXPECT_EQ(sizeof(json::StackDepthType), 1u);
    EXPECT_EQ(json::ObjectDepth, 0);
    EXPECT_EQ(json::ArrayDepth, 1);
}

TEST(LegacyDeserialize, ReadsEveryKindWithItsType) {
    const json::Value doc = json::Deserialize(
        "{\"a\": 1, \"b\": \"x\", \"c\": [1, 2], \"d\": {\"e\": true, \"f\": null, \"g\": 1/2}}");
    ASSERT_EQ(doc.GetType(), json::ObjectVal);
    EXPECT_EQ(KeysOf(doc), (std::vector<std::string>{"a", "b", "c", "d"}));
    EXPECT_EQ(doc["a"].GetType(), json::IntVal);
    EXPECT_EQ(doc["a"].ToInt(), 1);
    EXPECT_EQ(doc["b"].ToString(), "x");
    ASSERT_EQ(doc["c"].GetType(), json::ArrayVal);
    EXPECT_EQ(doc["c"][1u].ToInt(), 2);
    const json::Value& d = doc["d"];
    EXPECT_EQ(KeysOf(d), (std::vector<std::string>{"e", "f", "g"}));
    EXPECT_EQ(d["e"].GetType(), json::BoolVal);
    EXPECT_TRUE(d["e"].ToBool());
    EXPECT_EQ(d["f"].GetType(), json::NullVal);
    EXPECT_EQ(d["g"].GetType(), json::FractionVal);
    EXPECT_EQ(d["g"].ToFraction().num, 1);
    EXPECT_EQ(d["g"].ToFraction().den, 2);
}

TEST(LegacyDeserialize, IntegersReadAsIntValuesInEveryNumericField) {
    const json::Value doc = json::Deserialize("[7]");
    json::Value asFloat;
    asFloat = 7.0f;
    json::Value asDouble;
    asDouble = 7.0;
    // Comparing a float or double on the left reads the read value's float
    // and double fields.
    EXPECT_TRUE(asFloat == doc[0u]);
    EXPECT_TRUE(asDouble == doc[0u]);
}

TEST(LegacyDeserialize, TopLevelMustBeAnObjectOrAnArray) {
    for (const char* text : {"5", "\"s\"", "true", "null", "", "  ", "{", "[", "{]", "x{}"})
        EXPECT_EQ(json::Deserialize(text).GetType(), json::NullVal) << text;
    EXPECT_EQ(json::Deserialize(" {} ").GetType(), json::ObjectVal);
    EXPECT_EQ(json::Deserialize("\v\f[]\r").GetType(), json::ArrayVal);
}

TEST(LegacyDeserialize, OnlyTheFixedWhiteSpaceIsTrimmed) {
    // Bytes that some locales class as space are text here.
    EXPECT_EQ(json::Deserialize("\xA0[]").GetType(), json::NullVal);
    EXPECT_EQ(json::Serialize(json::Deserialize("[\"\xA0x\xA0\"]")), "[\"\xA0x\xA0\"]");
}

TEST(LegacyDeserialize, LaterCaseVariantsOfAKeyReuseTheFirstEntry) {
    const json::Value doc = json::Deserialize("{\"Key\": 1, \"b\": 2, \"KEY\": \"x\", \"key\": 3}");
    EXPECT_EQ(KeysOf(doc), (std::vector<std::string>{"Key", "b"}));
    EXPECT_EQ(doc["key"].ToInt(), 3);
}

TEST(LegacyDeserialize, KeysWithEqualHashesShareAnEntry) {
    ASSERT_EQ(tavrin::base::Hash("k32728"), tavrin::base::Hash("k261234"));
    const json::Value small = json::Deserialize("{\"k32728\": 1, \"k261234\": 2}");
    EXPECT_EQ(json::Serialize(small), "{\"k32728\":2}");
    std::string text = "{";
    for (int i = 0; i < 40; ++i) text += "\"n" + std::to_string(i) + "\": " + std::to_string(i) + ", ";
    text += "\"k32728\": 1, \"k261234\": 2}";
    const json::Value large = json::Deserialize(text);
    EXPECT_EQ(large.size(), 41u);
    EXPECT_EQ(large["k32728"].ToInt(), 2);
    EXPECT_EQ(KeysOf(large).back(), "k32728");
}

// Many keys, repeated in other letter cases: the reader's entries are those
// the object's own operator[] would make.
TEST(LegacyDeserialize, ManyKeysMatchTheTablesOwnLookup) {
    std::string text = "{";
    json::Value expected{json::Object()};
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 300; ++i) {
            const std::string key = (round == 0 ? "key" : "KEY") + std::to_string(i * 7 % 300);
            text += "\"" + key + "\": " + std::to_string(round * 1000 + i) + ",";
            expected[key] = round * 1000 + i;
        }
    }
    text.back() = '}';
    EXPECT_EQ(json::Serialize(json::Deserialize(text)), json::Serialize(expected));
}

TEST(LegacyDeserialize, AReusedEntryHoldsOnlyItsNewValue) {
    json::Value doc = json::Deserialize("{\"a\": 5, \"A\": \"x\"}");
    ASSERT_EQ(doc["a"].ToString(), "x");
    doc["a"] = 2.5f;
    EXPECT_EQ(doc["a"].ToInt(), 0);  // nothing left of the integer 5
}

TEST(LegacyDeserialize, MembersAndElementsThatAreNull) {
    const json::Value object = json::Deserialize("{\"a\": null, \"b\": , \"c\": }");
    EXPECT_EQ(object["a"].GetType(), json::NullVal);
    EXPECT_EQ(object["b"].GetType(), json::IntVal);
    EXPECT_EQ(object["b"].ToInt(), 0);
    EXPECT_EQ(object["c"].GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("[null, 1, , NULL, 2, null]").size(), 2u);
}

TEST(LegacyDeserialize, IntegersClampToThe32BitRange) {
    const json::Value doc =
        json::Deserialize("[2147483647, 2147483648, -2147483648, -2147483649, 99999999999999999999999]");
    const int expected[] = {2147483647, 2147483647, -2147483647 - 1, -2147483647 - 1, 2147483647};
    ASSERT_EQ(doc.size(), 5u);
    for (unsigned int i = 0; i < 5; ++i) EXPECT_EQ(doc[i].ToInt(), expected[i]) << i;
    EXPECT_EQ(json::Deserialize("[1 2]")[0u].ToInt(), 12);
    EXPECT_EQ(json::Deserialize("[+5]")[0u].ToInt(), 5);
    EXPECT_EQ(json::Deserialize("[-]").GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("[+-5]").GetType(), json::NullVal);
}

TEST(LegacyDeserialize, StringsAreUnescapedThenTrimmed) {
    const json::Value doc = json::Deserialize(
        "[\" a b \", \"\\f\\b\\r\\n\\tx\", \"\\u00e9\\u0041\", \"\\q\\z!\", \"\\/\\\\\", \"\\u12\"]");
    ASSERT_EQ(doc.size(), 6u);
    EXPECT_EQ(doc[0u].ToString(), "a b");
    EXPECT_EQ(doc[1u].ToString(), "\b\r\n\tx");  // trimming stops at the backspace
    EXPECT_EQ(doc[2u].ToString(), "\xE9" "A");
    EXPECT_EQ(doc[3u].ToString(), "!");
    EXPECT_EQ(doc[4u].ToString(), "/\\");
    EXPECT_EQ(doc[5u].ToString(), std::string(1, '\0'));
}

TEST(LegacyDeserialize, QuoteApostropheAndBracketCountsMustMatch) {
    EXPECT_EQ(json::Deserialize("{\"a\": \"it's\"}").GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("{\"a\": \"'it's'\"}").GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("{\"a\": \"'q'\"}")["a"].ToString(), "'q'");
    EXPECT_EQ(json::Deserialize("{\"a\": \"x\\\"y\"}").GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("{\"a\": \"\\\"y\\\"\"}")["a"].ToString(), "\"y\"");
    EXPECT_EQ(json::Deserialize("{\"a\": \"]\"}").GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("{\"a}\": 1}").GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("{\"a}\": \"{\"}").size(), 1u);
}

TEST(LegacyDeserialize, AFailedNestedContainerBecomesNullInItsPlace) {
    const json::Value doc = json::Deserialize("{\"m\": {b}, \"n\": [1, x], \"o\": [{\"\":1}, 2], \"p\": 3}");
    ASSERT_EQ(doc.GetType(), json::ObjectVal);
    EXPECT_EQ(doc["m"].GetType(), json::NullVal);
    EXPECT_EQ(doc["n"].GetType(), json::NullVal);
    EXPECT_EQ(json::Serialize(doc["o"]), "[2]");
    EXPECT_EQ(doc["p"].ToInt(), 3);
    // A failure at the document's own level fails the document.
    EXPECT_EQ(json::Deserialize("{\"m\": {b}, \"p\": x}").GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("[{b}, [1, 2.5], 3]").size(), 1u);
}

TEST(LegacyDeserialize, TrailingCommaFailsAnObjectButNotAnArray) {
    EXPECT_EQ(json::Deserialize("{\"a\": 1,}").GetType(), json::NullVal);
    EXPECT_EQ(json::Deserialize("{\"a\": {\"b\": 1,}}")["a"].GetType(), json::NullVal);
    EXPECT_EQ(json::Serialize(json::Deserialize("[1, [2,],]")), "[1,[2]]");
}
