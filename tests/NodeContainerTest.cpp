// Container operations of Node: results, the tree afterwards, and the exact
// (line-masked) log of every refused operation.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/NodeBuild.h"

using namespace tavrin::test;  // node builders, log capture

namespace {

const char kSource[] = "plugin/json/JsonNode.cpp";

Node Numbers() { return MakeArray({Int(1), Int(2), Int(3)}); }
Node Members() { return MakeObject({{"Mode", Int(1)}, {"b", Int(2)}, {"c", Int(3)}}); }

struct Refusal {
    const char* name;
    Node (*make)();
    std::function<bool(Node&)> operation;  // true when it returned its refusal value
    const char* function;
    std::string message;
};

std::string Array(const char* type) { return std::string("json node type Array required! this type is ") + type; }
const char kObject[] = "json node type Object required!";

TEST(NodeContainer, RefusedOperationsLogOneLineAndChangeNothing) {
    const std::vector<Refusal> cases = {
        {"index of int", [] { return Int(5); }, [](Node& n) { return &n[0] == &n; }, "operator[]", Array("int64")},
        {"index past end", Numbers, [](Node& n) { return &n[3] == &n; }, "operator[]",
         "over range:index(3)>=Array size(3)!"},
        {"negative index", Numbers, [](Node& n) { return &n[-1] == &n; }, "operator[]",
         "over range:index(-1)>=Array size(3)!"},
        {"key of array", Numbers, [](Node& n) { return &n["a"] == &n; }, "operator[]", kObject},
        {"insert into int", [] { return Int(5); }, [](Node& n) { return !n.Insert(Int(1)); }, "Insert",
         "json node type Array required!"},
        {"keyed insert into array", Numbers, [](Node& n) { return !n.Insert("a", Int(1)); }, "Insert", kObject},
        {"add or change in array", Numbers, [](Node& n) { return !n.AddOrChange("key", Int(1)); },
         "AddOrChange", " Add key key fail, json node type Object required!"},
        {"remove negative", Numbers, [](Node& n) { return !n.Remove(-1); }, "Remove",
         "over range:index(-1)>=Array size(3)!"},
        {"remove past end", Numbers, [](Node& n) { return !n.Remove(3); }, "Remove",
         "over range:index(3)>=Array size(3)!"},
        {"remove index of object", [] { return MakeObject({}); }, [](Node& n) { return !n.Remove(0); },
         "Remove", Array("Object")},
        {"remove missing key", Members, [](Node& n) { return !n.Remove(std::string("zz")); }, "Remove",
         "can't remove,key zz doesn't exsit!"},
        {"remove key of array", Numbers, [](Node& n) { return !n.Remove(std::string("a")); }, "Remove", kObject},
        {"has key of text", [] { return Text("x"); }, [](Node& n) { return !n.HasKey("x"); }, "HasKey", kObject},
    };
    for (const Refusal& c : cases) {
        LogCapture log;
        Node node = c.make();
        const std::string before = node.Serialize();
        EXPECT_TRUE(c.operation(node)) << c.name;
        EXPECT_EQ(node.Serialize(), before) << c.name;
        EXPECT_EQ(log.Lines(), RedLine(kSource, c.function, c.message)) << c.name;
    }
}

TEST(NodeContainer, EmptyOrTakenFromNodesAreNoArrays) {
    LogCapture log;
    Node empty;
    EXPECT_EQ(&empty[0], &empty);
    Node array = Numbers();
    Node taker(&array);
    EXPECT_EQ(&array[0], &array);
    EXPECT_EQ(log.Lines(), RedLine(kSource, "Type", "unknow json node type!") +
                               RedLine(kSource, "operator[]", Array("")) +
                               RedLine(kSource, "operator[]", Array("Array")));
}

TEST(NodeContainer, ChangesGiveTheirTrees) {
    const std::vector<std::pair<std::function<Node()>, const char*>> cases = {
        {[] { Node n = Numbers(); n[0] = Text("a"); return n; }, R"(["a",2,3])"},
        {[] { Node n = Members(); n["MODE"] = Int(7); n["d"]; n["d"] = Int(4); return n; },
         R"({"Mode":7,"b":2,"c":3,"d":4})"},
        {[] { Node n = MakeArray({}); Node e = MakeArray({Int(1)}); n.Insert(e); e.Insert(Int(2)); n.Insert(n); return n; },
         "[[1],[[1]]]"},
        {[] { Node n = MakeObject({{"x", Int(0)}}); n.Insert("a", Int(1)); n.Insert("y", Int(9));
              n.Insert("a", Int(2)); n.Insert("A", Int(3)); return n; },
         R"({"x":0,"a":[[1,2],3],"y":9})"},
        {[] { Node n = MakeObject({{"a", MakeArray({Int(1)})}}); n.Insert("a", n["a"]); return n; },
         R"({"a":[[1],[1]]})"},
        {[] { Node n = Members(); n.AddOrChange("B", Text("x")); n.AddOrChange("e", Int(5)); return n; },
         R"({"Mode":1,"b":"x","c":3,"e":5})"},
        {[] { Node n = MakeObject({{"a", MakeArray({Int(1), Int(2)})}});
              for (const char* k : {"b", "c", "d", "e", "f"}) { n.AddOrChange(k, n["a"]); } return n; },
         R"({"a":[1,2],"b":[1,2],"c":[1,2],"d":[1,2],"e":[1,2],"f":[1,2]})"},
        {[] { Node n = Numbers(); n.Remove(0); return n; }, "[2,3]"},
        {[] { Node n = Numbers(); n.Remove(2); return n; }, "[1,2]"},
        {[] { Node n = Members(); n.Remove(std::string("B")); return n; }, R"({"Mode":1,"c":3})"},
    };
    LogCapture log;
    for (const auto& [make, text] : cases) EXPECT_EQ(make().Serialize(), text);
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeContainer, KeysIgnoreAsciiCaseAndSizesCountMembers) {
    LogCapture log;
    Node object = Members();
    EXPECT_TRUE(object.HasKey("MODE"));
    EXPECT_TRUE(object.HasKey("mode"));
    EXPECT_FALSE(object.HasKey("Mod"));
    EXPECT_EQ(object["mODE"].As<long long>(), 1);
    EXPECT_EQ(object.Size(), 3u);
    EXPECT_EQ(Numbers().Size(), 3u);
    EXPECT_EQ(MakeObject({}).Size(), 0u);
    EXPECT_EQ(Text("abc").Size(), 0u);
    EXPECT_EQ(Node().Size(), 0u);
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeForeach, VisitsInOrderByReferenceUntilFalse) {
    Node array = Numbers();
    EXPECT_TRUE(array.Foreach([](Node& item) { item = Int(item.As<long long>() * 10); return true; }));
    std::vector<long long> seen;
    EXPECT_FALSE(array.Foreach([&](Node& item) { seen.push_back(item.As<long long>()); return seen.size() < 2; }));
    EXPECT_EQ(seen, (std::vector<long long>{10, 20}));

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
    calls = 0;  // a callback that empties the node ends the walk
    EXPECT_TRUE(array.Foreach([&](Node&) { ++calls; array = Node(); return true; }));
    EXPECT_EQ(calls, 1);
}

TEST(NodeForeach, WrongKindOrEmptyCallback) {
    LogCapture log;
    int calls = 0;
    EXPECT_FALSE(Members().Foreach([&](Node&) { return ++calls > 0; }));
    EXPECT_FALSE(Numbers().Foreach([&](const char*, Node&) { return ++calls > 0; }));
    EXPECT_FALSE(Node().Foreach([&](Node&) { return ++calls > 0; }));
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(log.Text(), "");
    EXPECT_TRUE(MakeArray({}).Foreach(std::function<bool(Node&)>()));
    EXPECT_THROW(Numbers().Foreach(std::function<bool(Node&)>()), std::bad_function_call);
    EXPECT_THROW(Members().Foreach(std::function<bool(const char*, Node&)>()), std::bad_function_call);
}

}  // namespace
