#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <string>

#include "json/legacy/Serialize.h"
#include "json/legacy/Value.h"
#include "json/legacy/Deserialize.h"
#include "support/DecimalCommaLocale.h"
#include "support/LegacyProbe.h"

using tavrin::test::MakeFraction;

namespace {

json::Value Float(float f) { return tavrin::test::FloatValue(f); }
json::Value Double(double d) { return tavrin::test::DoubleValue(d); }

}  // namespace

TEST(LegacySerialize, OnlyObjectsAndArraysAreDocuments) {
    EXPECT_EQ(json::Serialize(json::Value(5)), "");
    EXPECT_EQ(json::Serialize(json::Value("text")), "");
    EXPECT_EQ(json::Serialize(json::Value()), "");
    EXPECT_EQ(json::Serialize(json::Value(true)), "");
    EXPECT_EQ(SerializeValue(json::Value(5)), "5");
    EXPECT_EQ(SerializeValue(json::Value("text")), "\"text\"");
    EXPECT_EQ(SerializeValue(json::Value()), "null");
    EXPECT_EQ(json::Serialize(json::Value(json::Object())), "{}");
    EXPECT_EQ(json::Serialize(json::Value(json::Array())), "[]");
}

TEST(LegacySerialize, ScalarTexts) {
    EXPECT_EQ(SerializeValue(json::Value(true)), "true");
    EXPECT_EQ(SerializeValue(json::Value(false)), "false");
    EXPECT_EQ(SerializeValue(json::Value(std::numeric_limits<int>::min())), "-2147483648");
    EXPECT_EQ(SerializeValue(json::Value(std::numeric_limits<int>::max())), "2147483647");
    EXPECT_EQ(SerializeValue(json::Value(MakeFraction(1, 2))), "1/2");
    EXPECT_EQ(SerializeValue(json::Value(MakeFraction(-3, 0))), "-3/0");
    EXPECT_EQ(SerializeValue(json::Value("")), "\"\"");
}

TEST(LegacySerialize, FloatsAndDoublesAreShortestRoundTripDecimals) {
    EXPECT_EQ(SerializeValue(Float(2.5f)), "2.5");
    EXPECT_EQ(SerializeValue(Float(0.1f)), "0.1");
    EXPECT_EQ(SerializeValue(Float(-3.0f)), "-3");
    EXPECT_EQ(SerializeValue(Float(1e30f)), "1e+30");
    EXPECT_EQ(SerializeValue(Double(0.1)), "0.1");
    EXPECT_EQ(SerializeValue(Double(1.0 / 3.0)), "0.3333333333333333");
    EXPECT_EQ(SerializeValue(Double(-0.0)), "-0");
    EXPECT_EQ(SerializeValue(Double(1e-300)), "1e-300");
    EXPECT_EQ(SerializeValue(Double(std::numeric_limits<double>::quiet_NaN())), "null");
    EXPECT_EQ(SerializeValue(Double(-std::numeric_limits<double>::infinity())), "null");
    EXPECT_EQ(SerializeValue(Float(std::numeric_limits<float>::infinity())), "null");
}

TEST(LegacySerialize, ANumericValueWritesTheFieldOfItsType) {
    json::Value v(7);
    v = 2.5f;
    EXPECT_EQ(SerializeValue(v), "2.5");
    v = 9;
    EXPECT_EQ(SerializeValue(v), "9");
}

TEST(LegacySerialize, ObjectsKeepInsertionOrderAndKeyCase) {
    json::Value v{json::Object()};
    v["a"] = 1;
    v["b"] = true;
    EXPECT_EQ(json::Serialize(v), "{\"a\":1,\"b\":true}");
    json::Value w{json::Object()};
    w["Zeta"] = "z";
    w["alpha"] = json::Value();
    w["ZETA"] = 2;
    EXPECT_EQ(json::Serialize(w), "{\"Zeta\":2,\"alpha\":null}");
    EXPECT_EQ(SerializeValue(w), json::Serialize(w));
}

TEST(LegacySerialize, ArraysAndNesting) {
    json::Array inner;
    inner.push_back(json::Value(1));
    inner.push_back(json::Value(2));
    json::Array outer;
    outer.push_back(json::Value());
    outer.push_back(json::Value("x"));
    outer.push_back(json::Value(inner));
    EXPECT_EQ(SerializeArray(outer), "[null,\"x\",[1,2]]");
    EXPECT_EQ(json::Serialize(json::Value(outer)), "[null,\"x\",[1,2]]");
    json::Value doc{json::Object()};
    doc["list"] = outer;
    doc["o"] = json::Object();
    doc["o"]["f"] = MakeFraction(2, 3);
    EXPECT_EQ(json::Serialize(doc), "{\"list\":[null,\"x\",[1,2]],\"o\":{\"f\":2/3}}");
}

TEST(LegacySerialize, NothingIsEscaped) {
    json::Array a;
    a.push_back(json::Value("a\"b"));
    EXPECT_EQ(SerializeArray(a), "[\"a\"b\"]");
    json::Value v{json::Object()};
    v["k\"\\"] = "line\nbreak\t\x01";
    EXPECT_EQ(json::Serialize(v), "{\"k\"\\\":\"line\nbreak\t\x01\"}");
}

TEST(LegacySerialize, TheProcessLocaleChangesNothing) {
    tavrin::test::DecimalCommaLocale comma;
    if (!comma.Active()) GTEST_SKIP() << "no locale with a decimal comma could be set";
    char written[32];
    std::snprintf(written, sizeof written, "%.1f", 2.5);
    ASSERT_STREQ(written, "2,5");  // the locale is in force

    EXPECT_EQ(SerializeValue(Float(2.5f)), "2.5");
    EXPECT_EQ(SerializeValue(Double(-0.125)), "-0.125");
    const std::string text = "{\"a\":[1,-2,1/2],\"b\":\" x \",\"c\":TRUE}";
    EXPECT_EQ(json::Serialize(json::Deserialize(text)), "{\"a\":[1,-2,1/2],\"b\":\"x\",\"c\":true}");
}
