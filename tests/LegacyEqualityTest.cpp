#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "json/legacy/Value.h"
#include "support/LegacyProbe.h"

using tavrin::test::MakeFraction;

namespace {

json::Value Float(float f) { return tavrin::test::FloatValue(f); }
json::Value Double(double d) { return tavrin::test::DoubleValue(d); }

json::Value Fraction(long long num, long long den) { return json::Value(MakeFraction(num, den)); }

json::Value Array(std::initializer_list<json::Value> values) {
    json::Array a;
    for (const json::Value& v : values) a.push_back(v);
    return json::Value(a);
}

// Equality in both operand orders, which must agree for these pairs.
void ExpectEqualBothWays(const json::Value& a, const json::Value& b, bool expected) {
    EXPECT_EQ(a == b, expected);
    EXPECT_EQ(b == a, expected);
}

}  // namespace

TEST(LegacyEquality, NumbersCompareInTheWiderKind) {
    ExpectEqualBothWays(json::Value(7), json::Value(7), true);
    ExpectEqualBothWays(json::Value(7), Float(7.0f), true);
    ExpectEqualBothWays(json::Value(7), Double(7.0), true);
    ExpectEqualBothWays(json::Value(7), json::Value(8), false);
    ExpectEqualBothWays(Float(0.1f), Double(0.1), false);
    ExpectEqualBothWays(Float(0.5f), Double(0.5), true);
    ExpectEqualBothWays(Float(2.5f), Float(2.5f), true);
    ExpectEqualBothWays(Double(2.5), Double(2.25), false);
    // 16777217 is not a float: int with float compares in single precision,
    // int with double in double precision.
    ExpectEqualBothWays(json::Value(16777217), Float(16777216.0f), true);
    ExpectEqualBothWays(json::Value(16777217), Double(16777216.0), false);
    ExpectEqualBothWays(Double(0.0), Double(-0.0), true);
    ExpectEqualBothWays(Float(0.0f), json::Value(0), true);
}

TEST(LegacyEquality, NanEqualsNothing) {
    const json::Value f = Float(std::numeric_limits<float>::quiet_NaN());
    const json::Value d = Double(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(f == f);
    EXPECT_FALSE(d == d);
    ExpectEqualBothWays(f, d, false);
    ExpectEqualBothWays(f, json::Value(0), false);
}

TEST(LegacyEquality, TheNumericFieldOfEachSideIsRead) {
    // A float assigned over an int keeps the int field; equality reads the
    // float field of a FloatVal.
    json::Value floatOverInt(3);
    floatOverInt = 4.0f;
    ExpectEqualBothWays(floatOverInt, json::Value(4), true);
    ExpectEqualBothWays(floatOverInt, json::Value(3), false);
    json::Value doubleOverInt(3);
    doubleOverInt = 4.0;
    ExpectEqualBothWays(doubleOverInt, Float(4.0f), true);
}

TEST(LegacyEquality, DifferentTypesAreUnequalUnlessBothNumeric) {
    ExpectEqualBothWays(json::Value(), json::Value(0), false);
    ExpectEqualBothWays(json::Value(), json::Value(), true);
    ExpectEqualBothWays(json::Value(true), json::Value(1), false);
    ExpectEqualBothWays(json::Value("1"), json::Value(1), false);
    ExpectEqualBothWays(Fraction(1, 1), json::Value(1), false);
    ExpectEqualBothWays(Array({}), json::Value(), false);
}

TEST(LegacyEquality, TextsBooleansAndNulls) {
    ExpectEqualBothWays(json::Value("abc"), json::Value("abc"), true);
    ExpectEqualBothWays(json::Value("abc"), json::Value("abd"), false);
    ExpectEqualBothWays(json::Value("abc"), json::Value("ABC"), false);
    ExpectEqualBothWays(json::Value(std::string("a\0b", 3)), json::Value(std::string("a\0c", 3)), false);
    ExpectEqualBothWays(json::Value(true), json::Value(true), true);
    ExpectEqualBothWays(json::Value(true), json::Value(false), false);
}

TEST(LegacyEquality, FractionsCrossMultiplyIn64Bits) {
    ExpectEqualBothWays(Fraction(1, 2), Fraction(2, 4), true);
    ExpectEqualBothWays(Fraction(-1, 2), Fraction(1, -2), true);
    ExpectEqualBothWays(Fraction(1, 2), Fraction(1, 3), false);
    ExpectEqualBothWays(Fraction(0, 0), Fraction(0, 0), true);
    ExpectEqualBothWays(Fraction(0, 0), Fraction(0, 5), false);
    ExpectEqualBothWays(Fraction(0, 0), Fraction(3, 0), false);
    ExpectEqualBothWays(Fraction(1, 0), Fraction(2, 0), true);
    ExpectEqualBothWays(Fraction(1, 0), Fraction(0, 1), false);
    // 65536 x 65536 wraps to 0 in 32 bits.
    ExpectEqualBothWays(Fraction(65536, 1), Fraction(0, 65536), false);
    ExpectEqualBothWays(Fraction(2147483647, 2), Fraction(2147483647, 2), true);
}

TEST(LegacyEquality, ArraysCompareElementByElement) {
    ExpectEqualBothWays(Array({1, 2}), Array({1, 2}), true);
    ExpectEqualBothWays(Array({1, 2}), Array({1, 2, 3}), false);
    ExpectEqualBothWays(Array({1, 2}), Array({2, 1}), false);
    ExpectEqualBothWays(Array({1, Float(2.0f)}), Array({Double(1.0), 2}), true);
    ExpectEqualBothWays(Array({Array({json::Value("x")})}), Array({Array({json::Value("x")})}), true);
    ExpectEqualBothWays(Array({}), Array({}), true);
}

TEST(LegacyEquality, ObjectsAreEqualOnlyToThemselves) {
    json::Value a{json::Object()};
    a["k"] = 1;
    json::Value b{json::Object()};
    b["k"] = 1;
    EXPECT_TRUE(a == a);
    ExpectEqualBothWays(a, b, false);
    ExpectEqualBothWays(a, json::Value(a), false);
    ExpectEqualBothWays(Array({a}), Array({a}), false);
    const json::Value empty{json::Object()};
    EXPECT_TRUE(empty == empty);
}
