#include <gtest/gtest.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>

#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/NodeBuild.h"
#include "support/SourceLine.h"

using tavrin::base::Fraction;
using namespace tavrin::test;  // node builders, log capture, source lines

namespace {

const char kNodeSource[] = "plugin/json/JsonNode.cpp";

std::string UnknownTypeLine() {
    return RedLine(kNodeSource, tavrin::test::SourceLine(kNodeSource, "\"unknow json node type!\""),
                   "Type", "unknow json node type!");
}

// What As<T>() printed to standard output while `read` ran, and whether it
// threw std::bad_cast.
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
    return {testing::internal::GetCapturedStdout(), threw};
}

int AsLine(const char* needle) { return tavrin::test::SourceLine("plugin/json/JsonNode.h", needle); }

}  // namespace

TEST(NodeStorage, DefaultNodeIsEmptyAndOfNoKind) {
    LogCapture log;
    Node node;
    EXPECT_TRUE(node.IsEmpty());
    EXPECT_EQ(node._type, nullptr);
    EXPECT_FALSE(node.Is<bool>());
    EXPECT_FALSE(node._destroy || node._create || node._copy);
    EXPECT_STREQ(node.Type(), "");
    EXPECT_EQ(log.Text(), UnknownTypeLine());
}

TEST(NodeStorage, NamesEveryKind) {
    LogCapture log;
    Fraction half;
    half.From(1LL, 2LL);
    EXPECT_STREQ(Node(true).Type(), "bool");
    EXPECT_STREQ(Int(5).Type(), "int64");
    EXPECT_STREQ(Node(2.5).Type(), "double");
    EXPECT_STREQ(Node(half).Type(), "Fraction");
    EXPECT_STREQ(Text("x").Type(), "string");
    EXPECT_STREQ(MakeObject({}).Type(), "Object");
    EXPECT_STREQ(MakeArray({}).Type(), "Array");
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeStorage, InitWithoutValueGivesEachKindsDefault) {
    Node flag, integer, real, fraction, text, object, array;
    flag.Init<bool>(nullptr);
    integer.Init<long long>(nullptr);
    real.Init<double>(nullptr);
    fraction.Init<Fraction>(nullptr);
    text.Init<std::string>(nullptr);
    object.Init<Node::Object>(nullptr);
    array.Init<Node::Array>(nullptr);
    EXPECT_FALSE(flag.As<bool>());
    EXPECT_EQ(integer.As<long long>(), 0);
    EXPECT_EQ(real.As<double>(), 0.0);
    EXPECT_EQ(fraction.As<Fraction>().num, 0);
    EXPECT_EQ(fraction.As<Fraction>().den, 1);
    EXPECT_EQ(text.As<std::string>(), "");
    EXPECT_TRUE(object.As<Node::Object>().empty());
    EXPECT_TRUE(array.As<Node::Array>().empty());
    EXPECT_FALSE(array.IsEmpty());
}

TEST(NodeStorage, InitOverAValueReplacesIt) {
    Node node = MakeArray({Text("a"), Text("b")});
    Node element = node[1];
    node.Init<std::string>(&node[0].As<std::string>());
    EXPECT_EQ(node.As<std::string>(), "a");
    node.Init<std::string>(&node.As<std::string>());
    EXPECT_EQ(node.As<std::string>(), "a");
    node.Init<long long>(nullptr);
    EXPECT_EQ(node.Serialize(), "0");
    EXPECT_EQ(element.As<std::string>(), "b");
}

TEST(NodeStorage, ValueConstructorHoldsACopy) {
    Node yes(true);
    EXPECT_TRUE(yes.As<bool>());
    std::string source = "abc";
    Node text(source);
    source = "changed";
    EXPECT_EQ(text.As<std::string>(), "abc");
}

TEST(NodeStorage, TypeMismatchPrintsDiagnosticThenThrows) {
    Node text = Text("x");
    const auto [printed, threw] = AsOutput([&] { text.As<long long>(); });
    EXPECT_EQ(printed, "As " + std::to_string(AsLine("T _type error!")) +
                           " : T _type error! This type is string !\n");
    EXPECT_TRUE(threw);
    EXPECT_EQ(text.As<std::string>(), "x");
}

TEST(NodeStorage, MissingBufferPrintsDiagnosticWithoutLineFeed) {
    Node source = Int(7);
    Node taker(&source);
    const auto [printed, threw] = AsOutput([&] { source.As<long long>(); });
    EXPECT_EQ(printed, "As " + std::to_string(AsLine("As():_buf can't be nullptr!")) +
                           " : As():_buf can't be nullptr!");
    EXPECT_TRUE(threw);
}

TEST(NodeStorage, AsOnDefaultNodePrintsBothDiagnostics) {
    LogCapture log;
    Node empty;
    const auto [printed, threw] = AsOutput([&] { empty.As<bool>(); });
    EXPECT_EQ(printed, "As " + std::to_string(AsLine("T _type error!")) +
                           " : T _type error! This type is  !\nAs " +
                           std::to_string(AsLine("As():_buf can't be nullptr!")) +
                           " : As():_buf can't be nullptr!");
    EXPECT_TRUE(threw);
    EXPECT_EQ(log.Text(), UnknownTypeLine());
}

TEST(NodeStorage, CopyIsDeepAndIndependent) {
    Node source = MakeArray({MakeObject({{"a", Int(1)}}), MakeObject({{"b", Text("x")}})});
    Node copy(source);
    copy[0]["a"] = Int(2);
    copy[1].Insert("c", Int(3));
    EXPECT_EQ(source.Serialize(), R"([{"a":1},{"b":"x"}])");
    EXPECT_EQ(copy.Serialize(), R"([{"a":2},{"b":"x","c":3}])");
    EXPECT_NE(copy._buf, source._buf);
}

TEST(NodeStorage, CopyOfEmptyNodeIsEmpty) {
    Node empty;
    Node copy(empty);
    EXPECT_TRUE(copy.IsEmpty());
    EXPECT_EQ(copy._type, nullptr);
}

TEST(NodeStorage, TakingLeavesSourceEmptyButOfItsKind) {
    Node source = MakeArray({Int(1), Int(2)});
    void* const value = source._buf;
    Node taker(&source);
    EXPECT_EQ(taker._buf, value);
    EXPECT_EQ(taker.Serialize(), "[1,2]");
    EXPECT_TRUE(source.IsEmpty());
    EXPECT_STREQ(source.Type(), "Array");
    EXPECT_EQ(source.Size(), 0u);
    try {
        Node copy(source);
        FAIL() << "copying a taken-from node must throw";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "copy():ptr can't be nullptr!");
    }
}

TEST(NodeStorage, TakingFromNothingGivesEmptyNode) {
    Node never;
    Node fromEmpty(&never);
    Node fromNull(static_cast<Node*>(nullptr));
    EXPECT_TRUE(fromEmpty.IsEmpty());
    EXPECT_EQ(fromEmpty._type, nullptr);
    EXPECT_TRUE(fromNull.IsEmpty());
    EXPECT_EQ(fromNull._type, nullptr);
}

TEST(NodeStorage, SelfAssignmentKeepsValue) {
    Node node = MakeArray({Int(1)});
    Node& same = node;
    node = same;
    EXPECT_EQ(node.Serialize(), "[1]");
}

TEST(NodeStorage, AssigningEmptyNodeEmptiesTarget) {
    LogCapture log;
    Node node = Int(4);
    node = Node();
    EXPECT_TRUE(node.IsEmpty());
    EXPECT_STREQ(node.Type(), "");
    EXPECT_EQ(log.Text(), UnknownTypeLine());
}

TEST(NodeStorage, AssignmentChangesKindAndCopiesDeeply) {
    Node target = Int(4);
    Node source = MakeObject({{"k", MakeArray({Text("v")})}});
    target = source;
    source["k"].Insert(Int(9));
    EXPECT_STREQ(target.Type(), "Object");
    EXPECT_EQ(target.Serialize(), R"({"k":["v"]})");
}

TEST(NodeStorage, AssigningOwnDescendantIsSafe) {
    Node node = MakeArray({MakeArray({Int(1), MakeObject({{"x", Int(2)}})})});
    node = node[0];
    EXPECT_EQ(node.Serialize(), R"([1,{"x":2}])");
    node = std::move(node[1]);
    EXPECT_EQ(node.Serialize(), R"({"x":2})");
}

TEST(NodeStorage, FailedAssignmentLeavesTargetEmptyOfSourceKind) {
    Node source = Text("s");
    Node taker(&source);
    Node target = Int(1);
    EXPECT_THROW(target = source, std::runtime_error);
    EXPECT_TRUE(target.IsEmpty());
    EXPECT_STREQ(target.Type(), "string");
}

TEST(NodeStorage, MoveLeavesSourceWithoutKind) {
    Node source = MakeArray({Int(1)});
    Node moved(std::move(source));
    EXPECT_EQ(source._type, nullptr);  // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(source.IsEmpty());
    EXPECT_FALSE(source._destroy);
    EXPECT_EQ(moved.Serialize(), "[1]");
    Node target = Text("old");
    target = std::move(moved);
    EXPECT_EQ(target.Serialize(), "[1]");
    EXPECT_EQ(moved._type, nullptr);  // NOLINT(bugprone-use-after-move)
}

TEST(NodeStorage, ClearRemovesKindAndValue) {
    LogCapture log;
    Node node = MakeObject({{"a", Int(1)}});
    node.Clear();
    EXPECT_TRUE(node.IsEmpty());
    EXPECT_EQ(node._type, nullptr);
    EXPECT_EQ(node.Size(), 0u);
    EXPECT_FALSE(node.Is<Node::Object>());
    node.Clear();
    EXPECT_TRUE(node.IsEmpty());
    EXPECT_EQ(log.Text(), "");
}
