#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/NodeBuild.h"
#include "support/SourceLine.h"

using tavrin::plugin::json::Node;
using tavrin::test::Int;
using tavrin::test::LogCapture;
using tavrin::test::MakeArray;
using tavrin::test::MakeObject;
using tavrin::test::Text;

namespace {

const char kNodeSource[] = "plugin/json/JsonNode.cpp";

// The red line logged by the first statement holding `message` after the
// line holding `signature` in the node's source.
std::string LineAfter(const char* signature, const char* message, const std::string& function,
                      const std::string& text) {
    const int line = tavrin::test::SourceLineAfter(kNodeSource, signature, message);
    EXPECT_NE(line, 0) << message << " after " << signature;
    return tavrin::test::RedLine(kNodeSource, line, function, text);
}

std::string UnknownTypeLine() {
    return LineAfter("Node::Type()", "\"unknow json node type!\"", "Type", "unknow json node type!");
}

const char kIndexAt[] = "Node& Node::operator[](int index)";
const char kKeyAt[] = "Node& Node::operator[](const char* key)";
const char kInsertAt[] = "bool Node::Insert(const Node& node)";
const char kInsertKeyAt[] = "bool Node::Insert(const std::string& key, const Node& node)";
const char kAddOrChangeAt[] = "bool Node::AddOrChange(";
const char kRemoveIndexAt[] = "bool Node::Remove(int index)";
const char kRemoveKeyAt[] = "bool Node::Remove(const std::string& key)";
const char kHasKeyAt[] = "bool Node::HasKey(";

Node Numbers() { return MakeArray({Int(1), Int(2), Int(3)}); }

}  // namespace

TEST(NodeIndex, ElementOfArray) {
    Node array = Numbers();
    EXPECT_EQ(array[2].As<long long>(), 3);
    array[0] = Text("a");
    EXPECT_EQ(array.Serialize(), R"(["a",2,3])");
}

TEST(NodeIndex, WrongKindLogsTypeAndReturnsNode) {
    LogCapture log;
    Node integer = Int(5);
    EXPECT_EQ(&integer[0], &integer);
    EXPECT_EQ(log.Text(), LineAfter(kIndexAt, "Array required!", "operator[]",
                                    "json node type Array required! this type is int64"));
}

TEST(NodeIndex, EmptyNodeLogsUnknownTypeFirst) {
    LogCapture log;
    Node empty;
    EXPECT_EQ(&empty[0], &empty);
    EXPECT_EQ(log.Text(), UnknownTypeLine() + LineAfter(kIndexAt, "Array required!", "operator[]",
                                                        "json node type Array required! this type is "));
}

TEST(NodeIndex, OutOfRangeLogsIndexAndSizeAndReturnsNode) {
    LogCapture log;
    Node array = Numbers();
    EXPECT_EQ(&array[3], &array);
    EXPECT_EQ(&array[-1], &array);
    EXPECT_EQ(log.Text(),
              LineAfter(kIndexAt, "over range", "operator[]", "over range:index(3)>=Array size(3)!") +
                  LineAfter(kIndexAt, "over range", "operator[]",
                            "over range:index(-1)>=Array size(3)!"));
    EXPECT_EQ(array.Serialize(), "[1,2,3]");
}

TEST(NodeIndex, TakenFromArrayIsNoArray) {
    LogCapture log;
    Node array = Numbers();
    Node taker(&array);
    EXPECT_EQ(&array[0], &array);
    EXPECT_EQ(log.Text(), LineAfter(kIndexAt, "Array required!", "operator[]",
                                    "json node type Array required! this type is Array"));
}

TEST(NodeKey, AbsentKeyAppendsEmptyMember) {
    LogCapture log;
    Node object = MakeObject({{"Mode", Int(1)}});
    Node& existing = object["MODE"];
    EXPECT_EQ(existing.As<long long>(), 1);
    EXPECT_EQ(object.Size(), 1u);
    Node& added = object["b"];
    EXPECT_TRUE(added.IsEmpty());
    EXPECT_EQ(object.Size(), 2u);
    EXPECT_EQ(object.As<Node::Object>().back().key, "b");
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeKey, WrongKindLogsAndReturnsNode) {
    LogCapture log;
    Node array = Numbers();
    EXPECT_EQ(&array["a"], &array);
    EXPECT_EQ(log.Text(), LineAfter(kKeyAt, "Object required!", "operator[]",
                                    "json node type Object required!"));
}

TEST(NodeInsert, AppendsIndependentCopy) {
    Node array = MakeArray({});
    Node element = MakeArray({Int(1)});
    EXPECT_TRUE(array.Insert(element));
    element.Insert(Int(2));
    EXPECT_TRUE(array.Insert(array));
    EXPECT_EQ(array.Serialize(), "[[1],[[1]]]");
}

TEST(NodeInsert, IntoNonArrayLogsAndKeepsKind) {
    LogCapture log;
    Node integer = Int(5);
    EXPECT_FALSE(integer.Insert(Int(1)));
    EXPECT_STREQ(integer.Type(), "int64");
    EXPECT_EQ(log.Text(), LineAfter(kInsertAt, "Array required!", "Insert",
                                    "json node type Array required!"));
}

TEST(NodeInsert, KeyedIntoNonObjectLogs) {
    LogCapture log;
    Node array = Numbers();
    EXPECT_FALSE(array.Insert("a", Int(1)));
    EXPECT_EQ(array.Size(), 3u);
    EXPECT_EQ(log.Text(), LineAfter(kInsertKeyAt, "Object required!", "Insert",
                                    "json node type Object required!"));
}

TEST(NodeInsert, RepeatedKeyNestsArrays) {
    Node object = MakeObject({{"x", Int(0)}});
    EXPECT_TRUE(object.Insert("a", Int(1)));
    EXPECT_TRUE(object.Insert("y", Int(9)));
    EXPECT_TRUE(object.Insert("a", Int(2)));
    EXPECT_EQ(object.Serialize(), R"({"x":0,"a":[1,2],"y":9})");
    EXPECT_TRUE(object.Insert("A", Int(3)));
    EXPECT_EQ(object.Serialize(), R"({"x":0,"a":[[1,2],3],"y":9})");
    EXPECT_EQ(object.Size(), 3u);
}

TEST(NodeInsert, RepeatedKeyWithOwnMember) {
    Node object = MakeObject({{"a", MakeArray({Int(1)})}});
    EXPECT_TRUE(object.Insert("a", object["a"]));
    EXPECT_EQ(object.Serialize(), R"({"a":[[1],[1]]})");
}

TEST(NodeAddOrChange, ReplacesInPlaceOrAppends) {
    Node object = MakeObject({{"a", Int(1)}, {"b", Int(2)}});
    EXPECT_TRUE(object.AddOrChange("A", Text("x")));
    EXPECT_TRUE(object.AddOrChange("c", Int(3)));
    EXPECT_EQ(object.Serialize(), R"({"a":"x","b":2,"c":3})");
}

TEST(NodeAddOrChange, CopiesOwnMemberWhileGrowing) {
    Node object = MakeObject({{"a", MakeArray({Int(1), Int(2)})}});
    for (const char* key : {"b", "c", "d", "e", "f"}) EXPECT_TRUE(object.AddOrChange(key, object["a"]));
    EXPECT_EQ(object.Serialize(),
              R"({"a":[1,2],"b":[1,2],"c":[1,2],"d":[1,2],"e":[1,2],"f":[1,2]})");
}

TEST(NodeAddOrChange, NonObjectLogsKey) {
    LogCapture log;
    Node array = Numbers();
    EXPECT_FALSE(array.AddOrChange("key", Int(1)));
    EXPECT_EQ(log.Text(), LineAfter(kAddOrChangeAt, "Add key", "AddOrChange",
                                    " Add key key fail, json node type Object required!"));
}

TEST(NodeRemove, ElementShiftsLaterOnesDown) {
    Node front = Numbers();
    EXPECT_TRUE(front.Remove(0));
    EXPECT_EQ(front.Serialize(), "[2,3]");
    Node back = Numbers();
    EXPECT_TRUE(back.Remove(2));
    EXPECT_EQ(back.Serialize(), "[1,2]");
}

TEST(NodeRemove, BadIndexLogsAndKeepsArray) {
    LogCapture log;
    Node array = Numbers();
    EXPECT_FALSE(array.Remove(-1));
    EXPECT_FALSE(array.Remove(3));
    EXPECT_EQ(array.Serialize(), "[1,2,3]");
    EXPECT_EQ(log.Text(),
              LineAfter(kRemoveIndexAt, "over range", "Remove", "over range:index(-1)>=Array size(3)!") +
                  LineAfter(kRemoveIndexAt, "over range", "Remove",
                            "over range:index(3)>=Array size(3)!"));
}

TEST(NodeRemove, IndexFromNonArrayLogsType) {
    LogCapture log;
    Node object = MakeObject({});
    EXPECT_FALSE(object.Remove(0));
    EXPECT_EQ(log.Text(), LineAfter(kRemoveIndexAt, "Array required!", "Remove",
                                    "json node type Array required! this type is Object"));
}

TEST(NodeRemove, MemberKeepsOrderOfOthers) {
    Node object = MakeObject({{"a", Int(1)}, {"b", Int(2)}, {"c", Int(3)}});
    EXPECT_TRUE(object.Remove(std::string("B")));
    EXPECT_EQ(object.Serialize(), R"({"a":1,"c":3})");
}

TEST(NodeRemove, MissingKeyLogsKey) {
    LogCapture log;
    Node object = MakeObject({{"a", Int(1)}});
    EXPECT_FALSE(object.Remove(std::string("zz")));
    EXPECT_EQ(object.Size(), 1u);
    EXPECT_EQ(log.Text(), LineAfter(kRemoveKeyAt, "can't remove", "Remove",
                                    "can't remove,key zz doesn't exsit!"));
}

TEST(NodeRemove, KeyFromNonObjectLogs) {
    LogCapture log;
    Node array = Numbers();
    EXPECT_FALSE(array.Remove(std::string("a")));
    EXPECT_EQ(log.Text(), LineAfter(kRemoveKeyAt, "Object required!", "Remove",
                                    "json node type Object required!"));
}

TEST(NodeHasKey, IgnoresAsciiCase) {
    Node object = MakeObject({{"Mode", Int(1)}});
    EXPECT_TRUE(object.HasKey("MODE"));
    EXPECT_TRUE(object.HasKey("mode"));
    EXPECT_FALSE(object.HasKey("Mod"));
}

TEST(NodeHasKey, NonObjectLogs) {
    LogCapture log;
    Node text = Text("x");
    EXPECT_FALSE(text.HasKey("x"));
    EXPECT_EQ(log.Text(), LineAfter(kHasKeyAt, "Object required!", "HasKey",
                                    "json node type Object required!"));
}

TEST(NodeSize, CountsContainersOnly) {
    LogCapture log;
    EXPECT_EQ(Numbers().Size(), 3u);
    EXPECT_EQ(MakeObject({{"a", Int(1)}, {"b", Int(2)}}).Size(), 2u);
    EXPECT_EQ(MakeObject({}).Size(), 0u);
    EXPECT_EQ(Text("abc").Size(), 0u);
    EXPECT_EQ(Node().Size(), 0u);
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeForeach, StopsWhenCallbackReturnsFalse) {
    Node array = Numbers();
    std::vector<long long> seen;
    EXPECT_FALSE(array.Foreach([&](Node& item) {
        seen.push_back(item.As<long long>());
        return seen.size() < 2;
    }));
    EXPECT_EQ(seen, (std::vector<long long>{1, 2}));
}

TEST(NodeForeach, VisitsEveryElementByReference) {
    Node array = Numbers();
    EXPECT_TRUE(array.Foreach([](Node& item) {
        item = Int(item.As<long long>() * 10);
        return true;
    }));
    EXPECT_EQ(array.Serialize(), "[10,20,30]");
}

TEST(NodeForeach, EmptyArrayNeverLooksAtCallback) {
    Node array = MakeArray({});
    EXPECT_TRUE(array.Foreach(std::function<bool(Node&)>()));
}

TEST(NodeForeach, EmptyCallbackThrowsAtFirstElement) {
    Node array = Numbers();
    EXPECT_THROW(array.Foreach(std::function<bool(Node&)>()), std::bad_function_call);
    Node object = MakeObject({{"a", Int(1)}});
    EXPECT_THROW(object.Foreach(std::function<bool(const char*, Node&)>()), std::bad_function_call);
}

TEST(NodeForeach, WrongKindReturnsFalseSilently) {
    LogCapture log;
    Node object = MakeObject({{"a", Int(1)}});
    Node array = Numbers();
    int calls = 0;
    EXPECT_FALSE(object.Foreach([&](Node&) { return ++calls > 0; }));
    EXPECT_FALSE(array.Foreach([&](const char*, Node&) { return ++calls > 0; }));
    EXPECT_FALSE(Node().Foreach([&](Node&) { return ++calls > 0; }));
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeForeach, ObjectMembersInOrderWithStoredKeys) {
    Node object = MakeObject({{"First", Int(1)}, {"second", Int(2)}});
    object["FIRST"] = Int(3);
    std::string walk;
    EXPECT_TRUE(object.Foreach([&](const char* key, Node& value) {
        walk += std::string(key) + "=" + value.Serialize() + ";";
        return true;
    }));
    EXPECT_EQ(walk, "First=3;second=2;");
    int calls = 0;
    EXPECT_FALSE(object.Foreach([&](const char*, Node&) { return ++calls > 1; }));
    EXPECT_EQ(calls, 1);
}

TEST(NodeForeach, CallbackEmptyingTheNodeEndsTheWalk) {
    Node array = Numbers();
    int calls = 0;
    EXPECT_TRUE(array.Foreach([&](Node&) {
        ++calls;
        array = Node();
        return true;
    }));
    EXPECT_EQ(calls, 1);
}
