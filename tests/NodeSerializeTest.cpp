#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <typeinfo>

#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/NodeBuild.h"
#include "support/SourceLine.h"

using tavrin::base::Fraction;
using tavrin::plugin::json::Node;
using tavrin::test::Int;
using tavrin::test::LogCapture;
using tavrin::test::MakeArray;
using tavrin::test::MakeObject;
using tavrin::test::Real;
using tavrin::test::Text;

namespace {

std::string EmptyLine() {
    const char* path = "plugin/json/JsonNode.cpp";
    return tavrin::test::RedLine(path, tavrin::test::SourceLine(path, "\"json node is empty!\""),
                                 "Serialize", "json node is empty!");
}

Node MakeFraction(long long num, long long den) {
    Fraction fraction;
    fraction.From(num, den);
    return Node(fraction);
}

std::uint64_t Bits(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// The reader's number grammar for a double: an optional "-", an integer part
// without leading zeros, an optional fraction with digits, an optional
// exponent; with a "." or an exponent, or it would be read as an int64.
bool ReadsAsDouble(const std::string& text) {
    std::size_t i = 0;
    const auto digits = [&] {
        const std::size_t start = i;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i;
        return i - start;
    };
    if (i < text.size() && text[i] == '-') ++i;
    const std::size_t integerStart = i;
    const std::size_t integerDigits = digits();
    if (integerDigits == 0 || (integerDigits > 1 && text[integerStart] == '0')) return false;
    bool marked = false;
    if (i < text.size() && text[i] == '.') {
        ++i;
        if (digits() == 0) return false;
        marked = true;
    }
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
        if (digits() == 0) return false;
        marked = true;
    }
    return marked && i == text.size();
}

// Checks that the text written for `value` reads back to the same bits.
void ExpectRoundTrip(double value) {
    const std::string text = Real(value).Serialize();
    ASSERT_TRUE(ReadsAsDouble(text)) << text;
    double back = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), back);
    ASSERT_EQ(result.ec, std::errc()) << text;
    EXPECT_EQ(result.ptr, text.data() + text.size()) << text;
    EXPECT_EQ(Bits(back), Bits(value)) << text;
}

}  // namespace

TEST(NodeSerialize, EmptyNodeGivesNothingAndLogs) {
    LogCapture log;
    Node empty;
    EXPECT_EQ(empty.Serialize(), "");
    EXPECT_EQ(log.Text(), EmptyLine());
}

TEST(NodeSerialize, ObjectMembersInInsertionOrder) {
    Node object = MakeObject({});
    object.Insert("a", Int(1));
    object.Insert("b", Node(false));
    object.Insert("c", Text("xy"));
    const std::string text = object.Serialize();
    EXPECT_EQ(text, R"({"a":1,"b":false,"c":"xy"})");
    EXPECT_EQ(text.size(), 26u);
    EXPECT_EQ(object.Serialize(), text);
}

TEST(NodeSerialize, NestedContainersAndEmptyOnes) {
    EXPECT_EQ(MakeArray({MakeArray({Int(1), Int(2)}), Int(3)}).Serialize(), "[[1,2],3]");
    EXPECT_EQ(MakeArray({}).Serialize(), "[]");
    EXPECT_EQ(MakeObject({}).Serialize(), "{}");
    EXPECT_EQ(MakeObject({{"o", MakeObject({})}, {"a", MakeArray({MakeArray({})})}}).Serialize(),
              R"({"o":{},"a":[[]]})");
}

TEST(NodeSerialize, KeyKeepsTextItWasMadeWith) {
    Node object = MakeObject({{"Key", Int(1)}});
    object.AddOrChange("KEY", Int(2));
    EXPECT_EQ(object.Serialize(), R"({"Key":2})");
}

TEST(NodeSerialize, Integers) {
    EXPECT_EQ(Int(0).Serialize(), "0");
    EXPECT_EQ(Int(-1).Serialize(), "-1");
    EXPECT_EQ(Int(5000000000LL).Serialize(), "5000000000");
    EXPECT_EQ(Int(std::numeric_limits<long long>::max()).Serialize(), "9223372036854775807");
    EXPECT_EQ(Int(std::numeric_limits<long long>::min()).Serialize(), "-9223372036854775808");
}

TEST(NodeSerialize, FractionsAndBools) {
    EXPECT_EQ(MakeFraction(3, 4).Serialize(), "3/4");
    EXPECT_EQ(MakeFraction(-1, 2).Serialize(), "-1/2");
    EXPECT_EQ(MakeFraction(-2147483648LL, 2147483647LL).Serialize(), "-2147483648/2147483647");
    Node fraction;
    fraction.Init<Fraction>(nullptr);
    EXPECT_EQ(fraction.Serialize(), "0/1");
    EXPECT_EQ(Node(true).Serialize(), "true");
    EXPECT_EQ(Node(false).Serialize(), "false");
}

TEST(NodeSerialize, StringsAreWrittenAsStored) {
    const std::string raw = Text("a\"b").Serialize();
    EXPECT_EQ(raw, "\"a\"b\"");
    EXPECT_EQ(raw.size(), 5u);
    const std::string escaped = Text("a\\\"b").Serialize();
    EXPECT_EQ(escaped, "\"a\\\"b\"");
    EXPECT_EQ(escaped.size(), 6u);
    EXPECT_EQ(Text("\\n\t\\u00e9").Serialize(), "\"\\n\t\\u00e9\"");
    EXPECT_EQ(Text("").Serialize(), "\"\"");
}

TEST(NodeSerialize, TextsEndAtFirstNul) {
    Node object = MakeObject({});
    object.Insert(std::string("k\0ey", 4), Node(std::string("v\0al", 4)));
    EXPECT_EQ(object.Serialize(), R"({"k":"v"})");
}

TEST(NodeSerialize, EmptyMembersLeaveTheirPunctuation) {
    LogCapture log;
    Node object = MakeObject({{"a", Int(1)}});
    object["b"];
    EXPECT_EQ(object.Serialize(), R"({"a":1,"b":})");
    EXPECT_EQ(log.Text(), EmptyLine());
    log.Reset();
    Node array = MakeArray({Node(), Int(2), Node()});
    EXPECT_EQ(array.Serialize(), "[,2,]");
    EXPECT_EQ(log.Text(), EmptyLine() + EmptyLine());
}

TEST(NodeSerialize, TakenFromNodeIsEmpty) {
    LogCapture log;
    Node source = Int(1);
    Node taker(&source);
    EXPECT_EQ(source.Serialize(), "");
    EXPECT_EQ(log.Text(), EmptyLine());
}

TEST(NodeSerialize, ForeignKindGivesNothingSilently) {
    LogCapture log;
    int value = 1;
    Node foreign;
    foreign._type = &typeid(int);
    foreign._buf = &value;
    EXPECT_EQ(foreign.Serialize(), "");
    EXPECT_EQ(log.Text(), "");
    foreign._buf = nullptr;
}

TEST(NodeSerialize, TopLevelScalar) { EXPECT_EQ(Node(true).Serialize(), "true"); }

TEST(NodeSerialize, DoublesInShortestForm) {
    EXPECT_EQ(Real(0.0).Serialize(), "0.0");
    EXPECT_EQ(Real(-0.0).Serialize(), "-0.0");
    EXPECT_EQ(Real(1.0).Serialize(), "1.0");
    EXPECT_EQ(Real(2.5).Serialize(), "2.5");
    EXPECT_EQ(Real(0.1).Serialize(), "0.1");
    EXPECT_EQ(Real(-0.0015).Serialize(), "-0.0015");
    EXPECT_EQ(Real(1e21).Serialize(), "1e+21");
    EXPECT_EQ(Real(1e300).Serialize(), "1e+300");
    EXPECT_EQ(Real(5e-324).Serialize(), "5e-324");
    // As long as the shortest scientific form, so written in full: the exact
    // value is the nearest of the equally short texts.
    EXPECT_EQ(Real(123456789012345680000.0).Serialize(), "123456789012345683968.0");
    EXPECT_EQ(MakeArray({Real(0.5), Real(3.0)}).Serialize(), "[0.5,3.0]");
}

TEST(NodeSerialize, NonFiniteDoubles) {
    EXPECT_EQ(Real(std::numeric_limits<double>::infinity()).Serialize(), "1e999");
    EXPECT_EQ(Real(-std::numeric_limits<double>::infinity()).Serialize(), "-1e999");
    EXPECT_EQ(Real(std::numeric_limits<double>::quiet_NaN()).Serialize(), "0.0");
    EXPECT_TRUE(ReadsAsDouble("1e999"));
    EXPECT_TRUE(ReadsAsDouble("-1e999"));
    for (const char* text : {"1", "01.5", "1.", ".5", "1e", "1e+", "-", "1.5x", "inf", "nan"})
        EXPECT_FALSE(ReadsAsDouble(text)) << text;
}

TEST(NodeSerialize, ChosenDoublesReadBackExactly) {
    for (double value : {0.0, -0.0, 0.1, 0.2, 0.3, 1.0 / 3, 2.0 / 3, 1e300, 5e-324, 1e21, 1e22,
                         123456789012345680000.0, 9007199254740993.0, 4.35, 100.0, 1e-7,
                         std::numeric_limits<double>::max(), std::numeric_limits<double>::min(),
                         std::numeric_limits<double>::lowest(),
                         std::numeric_limits<double>::denorm_min(), -1.5e-3})
        ExpectRoundTrip(value);
}

TEST(NodeSerialize, RandomDoublesReadBackExactly) {
    std::mt19937_64 random(20261123);
    std::uniform_real_distribution<double> ordinary(-1e6, 1e6);
    for (int i = 0; i < 20000; ++i) {
        double value;
        const std::uint64_t bits = random();
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value)) ExpectRoundTrip(value);
        ExpectRoundTrip(ordinary(random));
    }
}
