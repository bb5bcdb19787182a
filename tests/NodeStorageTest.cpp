// Node's storage (kinds, copies, moves, taking) and its text: every kind
// written, doubles in their shortest form that reads back bit for bit.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <regex>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/NodeBuild.h"

using tavrin::base::Fraction;
using namespace tavrin::test;  // node builders, log capture

namespace {

const char kSource[] = "plugin/json/JsonNode.cpp";
const std::string kUnknown = RedLine(kSource, "Type", "unknow json node type!");
const std::string kEmpty = RedLine("plugin/json/NodeWriter.cpp", "Serialize", "json node is empty!");

Node MakeFraction(long long num, long long den) {
    Fraction fraction;
    fraction.From(num, den);
    return Node(fraction);
}

template <class T>
Node Default() {
    Node node;
    node.Init<T>(nullptr);
    return node;
}

// What As<T>() printed to standard output while `read` ran (line numbers
// masked as "#"), and whether it threw std::bad_cast.
template <class Read>
std::pair<std::string, bool> AsOutput(Read read) {
    testing::internal::CaptureStdout();
    bool threw = false;
    try {
        read();
    } catch (const std::bad_cast&) {
        threw = true;
    }
    std::fflush(stdout);
    return {std::regex_replace(testing::internal::GetCapturedStdout(), std::regex("As [0-9]+ :"), "As # :"),
            threw};
}

TEST(NodeStorage, KindsDefaultsAndTexts) {
    LogCapture log;
    const double inf = std::numeric_limits<double>::infinity();
    const long long max = std::numeric_limits<long long>::max();
    const std::vector<std::tuple<Node, const char*, const char*>> cases = {
        {Node(true), "bool", "true"}, {Node(false), "bool", "false"}, {Default<bool>(), "bool", "false"},
        {Int(-1), "int64", "-1"}, {Int(max), "int64", "9223372036854775807"},
        {Int(-max - 1), "int64", "-9223372036854775808"}, {Default<long long>(), "int64", "0"},
        {Real(2.5), "double", "2.5"}, {Real(-0.0), "double", "-0.0"}, {Real(1.0), "double", "1.0"},
        {Real(-0.0015), "double", "-0.0015"}, {Real(1e21), "double", "1e+21"}, {Real(5e-324), "double", "5e-324"},
        {Real(123456789012345680000.0), "double", "123456789012345683968.0"},
        {Real(inf), "double", "1e999"}, {Real(-inf), "double", "-1e999"},
        {Real(std::numeric_limits<double>::quiet_NaN()), "double", "0.0"}, {Default<double>(), "double", "0.0"},
        {MakeFraction(-1, 2), "Fraction", "-1/2"},
        {MakeFraction(-2147483648LL, 2147483647LL), "Fraction", "-2147483648/2147483647"},
        {Default<Fraction>(), "Fraction", "0/1"},
        {Text("a\"b"), "string", "\"a\"b\""}, {Text("\\n\t\\u00e9"), "string", "\"\\n\t\\u00e9\""},
        {Default<std::string>(), "string", "\"\""},
        {Default<Node::Object>(), "Object", "{}"}, {Default<Node::Array>(), "Array", "[]"},
        {MakeObject({{"o", MakeObject({})}, {"a", MakeArray({MakeArray({}), Real(0.5), Int(3)})}}), "Object",
         R"({"o":{},"a":[[],0.5,3]})"},
    };
    for (const auto& [node, type, text] : cases) {
        Node copy(node);
        EXPECT_STREQ(copy.Type(), type) << text;
        EXPECT_EQ(copy.Serialize(), text);
    }
    Node object = MakeObject({});
    object.Insert(std::string("k\0ey", 4), Node(std::string("v\0al", 4)));
    EXPECT_EQ(object.Serialize(), R"({"k":"v"})");  // texts end at their first NUL
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeStorage, EmptyNodesWriteNothingButKeepTheirPunctuation) {
    LogCapture log;
    Node empty;
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_FALSE(empty.Is<bool>());
    EXPECT_STREQ(empty.Type(), "");
    EXPECT_EQ(empty.Serialize(), "");
    Node object = MakeObject({{"a", Int(1)}});
    object["b"];
    EXPECT_EQ(object.Serialize(), R"({"a":1,"b":})");
    EXPECT_EQ(MakeArray({Node(), Int(2), Node()}).Serialize(), "[,2,]");
    EXPECT_EQ(log.Lines(), kUnknown + kEmpty + kEmpty + kEmpty + kEmpty);

    log.Reset();
    int value = 1;
    Node foreign;
    foreign._type = &typeid(int);
    foreign._buf = &value;
    EXPECT_EQ(foreign.Serialize(), "");
    foreign._buf = nullptr;
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeStorage, WrongKindOrTakenValuePrintsDiagnosticThenThrows) {
    LogCapture log;
    Node text = Text("x");
    EXPECT_EQ(AsOutput([&] { text.As<long long>(); }),
              std::make_pair(std::string("As # : T _type error! This type is string !\n"), true));
    EXPECT_EQ(text.As<std::string>(), "x");
    Node source = Int(7);
    Node taker(&source);
    EXPECT_EQ(AsOutput([&] { source.As<long long>(); }),
              std::make_pair(std::string("As # : As():_buf can't be nullptr!"), true));
    Node empty;
    EXPECT_EQ(AsOutput([&] { empty.As<bool>(); }),
              std::make_pair(std::string("As # : T _type error! This type is  !\nAs # : As():_buf can't be nullptr!"),
                             true));
    EXPECT_EQ(log.Lines(), kUnknown);
}

TEST(NodeStorage, CopiesAreDeepAndAssignmentIsSafeOnItsOwnParts) {
    Node source = MakeArray({MakeObject({{"a", Int(1)}}), MakeObject({{"b", Text("x")}})});
    Node copy(source);
    copy[0]["a"] = Int(2);
    copy[1].Insert("c", Int(3));
    EXPECT_EQ(source.Serialize(), R"([{"a":1},{"b":"x"}])");
    EXPECT_EQ(copy.Serialize(), R"([{"a":2},{"b":"x","c":3}])");
    Node target = Int(4);
    target = source;
    source[0].Insert("z", Int(9));
    EXPECT_EQ(target.Serialize(), R"([{"a":1},{"b":"x"}])");
    target = target;
    target = target[1];
    EXPECT_EQ(target.Serialize(), R"({"b":"x"})");
    Node nested = MakeArray({MakeArray({Int(1), MakeObject({{"x", Int(2)}})})});
    nested = std::move(nested[0][1]);
    EXPECT_EQ(nested.Serialize(), R"({"x":2})");
    Node replaced = MakeArray({Text("a"), Text("b")});
    replaced.Init<std::string>(&replaced[0].As<std::string>());
    EXPECT_EQ(replaced.Serialize(), "\"a\"");
    Node text = Text("abc");
    text.Init<std::string>(&text.As<std::string>());
    EXPECT_EQ(text.Serialize(), "\"abc\"");
}

TEST(NodeStorage, TakingAndMovingLeaveTheSourceEmpty) {
    Node source = MakeArray({Int(1), Int(2)});
    void* const value = source._buf;
    Node taker(&source);
    EXPECT_EQ(taker._buf, value);
    EXPECT_TRUE(source.IsEmpty());
    EXPECT_STREQ(source.Type(), "Array");  // taken from: empty, but of its kind
    try {
        Node copy(source);
        FAIL() << "copying a taken-from node must throw";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "copy():ptr can't be nullptr!");
    }
    Node target = Int(1);
    EXPECT_THROW(target = source, std::runtime_error);
    EXPECT_TRUE(target.IsEmpty());
    EXPECT_STREQ(target.Type(), "Array");

    Node never;
    for (Node* from : {&never, static_cast<Node*>(nullptr)}) EXPECT_EQ(Node(from)._type, nullptr);
    Node moved(std::move(taker));
    EXPECT_EQ(taker._type, nullptr);  // NOLINT(bugprone-use-after-move)
    Node assigned = Text("old");
    assigned = std::move(moved);
    EXPECT_EQ(moved._type, nullptr);  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(assigned.Serialize(), "[1,2]");
    assigned.Clear();
    EXPECT_TRUE(assigned.IsEmpty());
    EXPECT_EQ(assigned._type, nullptr);
    assigned = Node(Node());
    EXPECT_EQ(assigned._type, nullptr);
}

std::uint64_t Bits(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// The text written for `value` has the form the reader takes as a double
// (a "." or an exponent, no leading zeros) and reads back to the same bits.
void ExpectRoundTrip(double value) {
    static const std::regex kDouble("-?(0|[1-9][0-9]*)(\\.[0-9]+)?([eE][-+]?[0-9]+)?");
    const std::string text = Real(value).Serialize();
    ASSERT_TRUE(std::regex_match(text, kDouble) && text.find_first_of(".e") != std::string::npos) << text;
    double back = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), back);
    ASSERT_EQ(result.ptr, text.data() + text.size()) << text;
    EXPECT_EQ(Bits(back), Bits(value)) << text;
}

TEST(NodeStorage, DoublesReadBackExactly) {
    for (double value : {0.1, 1.0 / 3, 1e22, 9007199254740993.0, 4.35, 1e-7, std::numeric_limits<double>::max(),
                         std::numeric_limits<double>::min(), std::numeric_limits<double>::denorm_min()})
        ExpectRoundTrip(value);
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

}  // namespace
