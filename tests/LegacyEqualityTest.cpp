#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "json/legacy/Serialize.h"
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
    EXPECT_EQ(a == b, expected) << SerializeValue(a) << " == " << SerializeValue(b);
    EXPECT_EQ(b == a, expected) << SerializeValue(b) << " == " << SerializeValue(a);
}

}  // namespace

// Pairs and whether they are equal; equality must agree in both operand
// orders. Numbers compare in the wider kind (int with float in single
// precision, int with double in double precision); other types only with
// their own; fractions cross-multiply in 64 bits; arrays element by element.
TEST(LegacyEquality, PairsCompareAsTheirTypesSay) {
    struct Case {
        json::Value a, b;
        bool equal;
    };
    const Case cases[] = {
        {json::Value(7), json::Value(7), true},
        {json::Value(7), Float(7.0f), true},
        {json::Value(7), Double(7.0), true},
        {json::Value(7), json::Value(8), false},
        {Float(0.1f), Double(0.1), false},
        {Float(0.5f), Double(0.5), true},
        {Float(2.5f), Float(2.5f), true},
        {Double(2.5), Double(2.25), false},
        // 16777217 is not a float.
        {json::Value(16777217), Float(16777216.0f), true},
        {json::Value(16777217), Double(16777216.0), false},
        {Double(0.0), Double(-0.0), true},
        {Float(0.0f), json::Value(0), true},
        {json::Value(), json::Value(0), false},
        {json::Value(), json::Value(), true},
        {json::Value(true), json::Value(1), false},
        {json::Value("1"), json::Value(1), false},
        {Fraction(1, 1), json::Value(1), false},
        {Array({}), json::Value(), false},
        {json::Value("abc"), json::Value("abc"), true},
        {json::Value("abc"), json::Value("abd"), false},
        {json::Value("abc"), json::Value("ABC"), false},
        {json::Value(std::string("a\0b", 3)), json::Value(std::string("a\0c", 3)), false},
        {json::Value(true), json::Value(true), true},
        {json::Value(true), json::Value(false), false},
        {Fraction(1, 2), Fraction(2, 4), true},
        {Fraction(-1, 2), Fraction(1, -2), true},
        {Fraction(1, 2), Fraction(1, 3), false},
        {Fraction(0, 0), Fraction(0, 0), true},
        {Fraction(0, 0), Fraction(0, 5), false},
        {Fraction(0, 0), Fraction(3, 0), false},
        {Fraction(1, 0), Fraction(2, 0), true},
        {Fraction(1, 0), Fraction(0, 1), false},
        // 65536 x 65536 wraps to 0 in 32 bits.
        {Fraction(65536, 1), Fraction(0, 65536), false},
        {Fraction(2147483647, 2), Fraction(2147483647, 2), true},
        {Array({1, 2}), Array({1, 2}), true},
        {Array({1, 2}), Array({1, 2, 3}), false},
        {Array({1, 2}), Array({2, 1}), false},
        {Array({1, Float(2.0f)}), Array({Double(1.0), 2}), true},
        {Array({Array({json::Value("x")})}), Array({Array({json::Value("x")})}), true},
        {Array({}), Array({}), true},
    };
    for (const Case& c : cases) ExpectEqualBothWays(c.a, c.b, c.equal);
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
