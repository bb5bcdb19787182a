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

TEST(LegacyDeserialize, KeysWithEqualHashesShareAnEntryInALargeObject) {
    ASSERT_EQ(tavrin::base::Hash("k32728"), tavrin::base::Hash("k261234"));
    std::string text = "{";
    for (int i = 0; i < 40; ++i) text += "\"n" + std::to_string(i) + "\": " + std::to_string(i) + ", ";
    text += "\"k32728\": 1, \"k261234\": 2}";
    const json::Value large = json::Deserialize(text);
    EXPECT_EQ(large.size(), 41u);
    EXPECT_EQ(large["k32728"].ToInt(), 2);
    EXPECT_EQ(KeysOf(large).back(), "k32728");
}

// Past the size where the reader indexes its entries (the small case is in
// the conformance corpus). Many keys, repeated in other letter cases: the reader's entries are those
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

