// Node: kinds and their texts (doubles of every bit pattern read back bit for
// bit), copies, moves and taking, container operations with the exact
// (line-masked) log of every refused one, and deep trees handled without a
// deep stack in linear time.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <regex>
#include <stdexcept>
#include <string>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/AllocationCounter.h"
#include "support/FailEachAllocation.h"
#include "support/LogCapture.h"
#include "support/SmallStack.h"

using tavrin::base::Fraction;
using tavrin::plugin::json::Node;
using namespace tavrin::test;  // log capture, allocation counter, small stack

namespace {

const char kSource[] = "plugin/json/JsonNode.cpp";
const std::string kUnknown = RedLine(kSource, "Type", "unknow json node type!");
const std::string kEmpty = RedLine(kSource, "Serialize", "json node is empty!");

Node Int(long long value) { return Node(value); }
Node Real(double value) { return Node(value); }
Node Text(const char* value) { return Node(std::string(value)); }
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
Node MakeArray(std::initializer_list<Node> items) {
    Node node = Default<Node::Array>();
    for (const Node& item : items) node.As<Node::Array>().push_back(item);
    return node;
}
Node MakeObject(std::initializer_list<std::pair<const char*, Node>> members) {
    Node node = Default<Node::Object>();
    for (const auto& member : members) node.As<Node::Object>()[member.first] = member.second;
    return node;
}
Node Numbers() { return MakeArray({Int(1), Int(2), Int(3)}); }
Node Members() { return MakeObject({{"Mode", Int(1)}, {"b", Int(2)}, {"c", Int(3)}}); }

TEST(NodeStorage, KindsDefaultsAndTexts) {
    LogCapture log;
    const double inf = std::numeric_limits<double>::infinity();
    const std::vector<std::tuple<Node, const char*, const char*>> cases = {
        {Node(true), "bool", "true"}, {Node(false), "bool", "false"}, {Default<bool>(), "bool", "false"},
        {Int(-1), "int64", "-1"}, {Default<long long>(), "int64", "0"},
        // Numbers read from texts are written as the conformance corpus says.
        {Real(-0.0), "double", "-0.0"}, {Real(inf), "double", "1e999"}, {Real(-inf), "double", "-1e999"},
        {Real(std::numeric_limits<double>::quiet_NaN()), "double", "0.0"}, {Default<double>(), "double", "0.0"},
        {MakeFraction(-1, 2), "Fraction", "-1/2"}, {MakeFraction(1, -2), "Fraction", "1/-2"},
        {Default<Fraction>(), "Fraction", "0/1"},
        {Text("a\"b"), "string", "\"a\"b\""}, {Text("\\n\t\\u00e9"), "string", "\"\\n\t\\u00e9\""},
        {Default<std::string>(), "string", "\"\""},
        {Default<Node::Object>(), "Object", "{}"}, {Default<Node::Array>(), "Array", "[]"},
        {MakeObject({{"o", MakeObject({})}, {"a", MakeArray({MakeArray({}), Real(0.5), Int(3)})}}), "Object",
         R"({"o":{},"a":[[],0.5,3]})"},
        // Items without parts and containers, in every order, at every depth.
        {MakeArray({Int(1), MakeArray({Int(-1), Text("a"), Node(true), MakeFraction(1, 2), Real(0.5)}),
                    MakeObject({{"k", MakeArray({})}}), Node(false), MakeArray({MakeArray({Text("z")})})}),
         "Array", R"([1,[-1,"a",true,1/2,0.5],{"k":[]},false,[["z"]]])"},
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

// Every finite double, whatever its bit pattern, is written in a form the
// reader takes as a double (a "." or an exponent) that reads back to the same
// bits; so are ordinary values.
TEST(NodeStorage, DoublesOfEveryBitPatternReadBackBitForBit) {
    std::mt19937_64 random(20261123);
    for (int i = 0; i < 40000; ++i) {
        double value = static_cast<double>(static_cast<long long>(random() % 2000000001) - 1000000000) / 1000;
        const std::uint64_t bits = random();
        if (i % 2 == 0) std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) continue;
        const std::string text = "[" + Node(value).Serialize() + "]";
        Node read;
        ASSERT_TRUE(read.Deserialize(text) && read[0].Is<double>()) << text;
        const double back = read[0].As<double>();
        EXPECT_EQ(std::memcmp(&back, &value, sizeof value), 0) << text;
    }
}

TEST(NodeStorage, EmptyNodesWriteNothingButKeepTheirPunctuation) {
    LogCapture log;
    Node empty;
    const std::string type = empty.Type();  // its line comes before the empty text's
    EXPECT_EQ(std::make_tuple(empty.IsEmpty(), empty.Is<bool>(), type, empty.Serialize()),
              std::make_tuple(true, false, "", ""));
    Node object = MakeObject({{"a", Int(1)}});
    object["b"];
    EXPECT_EQ(object.Serialize(), R"({"a":1,"b":})");
    EXPECT_EQ(MakeArray({Node(), Int(2), Node()}).Serialize(), "[,2,]");
    EXPECT_EQ(MakeArray({Int(1), Node(), Real(2.5), Node()}).Serialize(), "[1,,2.5,]");
    Node takenFrom = MakeArray({Int(1), Real(2.5), Int(3)});
    const Node taker(&takenFrom[1]);  // leaves an item of its kind, but empty
    EXPECT_EQ(takenFrom.Serialize(), "[1,,3]");
    Node takenFirst = MakeArray({Real(2.5), Int(3)});
    const Node firstTaker(&takenFirst[0]);
    EXPECT_EQ(takenFirst.Serialize(), "[,3]");
    int stray = 5;  // a value of no kind a node writes: nothing, and no line
    Node& odd = takenFirst.As<Node::Array>().emplace_back();
    odd._type = &typeid(int);
    odd._buf = &stray;  // no handlers: nothing frees it
    EXPECT_EQ(odd.Serialize() + takenFirst.Serialize(), "[,3,]");
    std::string expected = kUnknown;
    for (int empties = 0; empties < 9; ++empties) expected += kEmpty;
    EXPECT_EQ(log.Lines(), expected);
}

// What As<T>() printed to standard output while `read` ran (line numbers
// masked as "#"), and whether it threw std::bad_cast.
std::pair<std::string, bool> AsOutput(const std::function<void()>& read) {
    testing::internal::CaptureStdout();
    bool threw = false;
    try {
        read();
    } catch (const std::bad_cast&) {
        threw = true;
    }
    std::fflush(stdout);
    return {std::regex_replace(testing::internal::GetCapturedStdout(), std::regex("As [0-9]+ :"), "As # :"), threw};
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
    Node& itself = target;
    target = itself;  // through a reference, as a self-assignment comes about
    const Node never;
    Node emptied = Int(5);
    emptied = never;
    EXPECT_TRUE(emptied.IsEmpty() && emptied._type == nullptr);
    target = target[1];
    EXPECT_EQ(target.Serialize(), R"({"b":"x"})");
    Node whole = MakeArray({Int(1), Text("y")});
    whole[0] = whole;  // a tree assigned into its own part: a copy of all it was
    EXPECT_EQ(whole.Serialize(), R"([[1,"y"],"y"])");
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

// A type record of the same name at another address, as another module
// may hold one.
struct ForeignRecord : std::type_info {
    explicit ForeignRecord(const char* name) : std::type_info(name) {}
};

// A container set up by hand, with no handlers, copies as a node of its kind
// (known by its record's name) without a value, nested as on its own; its
// maker frees it. copy<T> gives a node a container from new when the node
// has no handlers or those of another kind.
TEST(NodeStorage, ContainersSetUpByHandCopyAsTheirHandlersSay) {
    Node parent = MakeArray({Int(1)});
    Node& bare = parent.As<Node::Array>().emplace_back();
    static const ForeignRecord kForeignArray(typeid(Node::Array).name());
    bare._type = &kForeignArray;
    bare._buf = new Node::Array(1, Int(7));
    Node copy(parent), alone(bare);
    for (Node* made : {&copy[1], &alone})
        EXPECT_EQ(std::make_tuple(made->Is<Node::Array>(), made->IsEmpty()), std::make_tuple(true, true));
    Node number = Int(5);
    Node taken(&number);  // the number's handlers stay, its value goes
    for (Node* target : {&number, &alone}) target->copy<Node::Array>(target, bare._buf);
    for (Node* made : {&bare, &number, &alone}) {
        EXPECT_EQ(static_cast<Node::Array*>(made->_buf)->back().Serialize(), "7");
        delete static_cast<Node::Array*>(made->_buf);
        made->_buf = nullptr;
    }
}

// A container whose _destroy slot was emptied by hand is not freed by the
// node, on its own or as an item: no handler, nothing freed.
TEST(NodeStorage, ContainersWithoutDestroyHandlerAreLeftToTheirMaker) {
    Node::Array* kept[2] = {};
    {
        Node alone = MakeArray({Int(1)});
        Node parent = MakeArray({MakeArray({Int(2)})});
        for (Node* node : {&alone, &parent[0]}) node->_destroy = nullptr;
        kept[0] = static_cast<Node::Array*>(alone._buf);
        kept[1] = static_cast<Node::Array*>(parent[0]._buf);
    }
    EXPECT_EQ((*kept[0])[0].Serialize() + (*kept[1])[0].Serialize(), "12");
    for (Node::Array* array : kept) delete array;
}

// The items of a tree read from text are freed together while their handlers
// are the reader's own. An item given a handler with state, in any of its
// three slots, is freed through its handlers instead, and the state with it:
// a double, a text and a nested array, each slot in turn.
TEST(NodeStorage, ItemsGivenHandlersWithStateReleaseThemWithTheTree) {
    const auto state = std::make_shared<int>(0);
    const std::vector<std::vector<int>> paths = {{0, 0}, {1, 0}, {0}};
    for (const std::vector<int>& path : paths) {
        for (int slot = 0; slot < 3; ++slot) {
            {
                Node tree;
                ASSERT_TRUE(tree.Deserialize(R"([[1.5,2],["text",true]])"));
                Node* item = &tree;
                for (int index : path) item = &(*item)[index];
                if (slot == 0) item->_destroy = [state, own = item->_destroy](Node* n) { own(n); };
                if (slot == 1) item->_create = [state, own = item->_create](Node* n) { own(n); };
                if (slot == 2) item->_copy = [state, own = item->_copy](Node* n, void* src) { own(n, src); };
                ASSERT_EQ(state.use_count(), 2);
                EXPECT_EQ(tree.Serialize(), R"([[1.5,2],["text",true]])");
            }
            EXPECT_EQ(state.use_count(), 1) << "item " << path.size() << ", slot " << slot;
        }
    }
}

// Copying a tree fails at an item whose value was taken, after the items and
// containers before it were made: all of them are freed again, in a tree built
// by hand and in one read from text (whose copies take cells of their own).
TEST(NodeStorage, ACopyThatFailsPartWayFreesAllItMade) {
    Node built = MakeArray({MakeArray({Int(1), Text("a text longer than inline ones")}), MakeArray({Int(2), Int(3)})});
    Node read;
    ASSERT_TRUE(read.Deserialize(R"([[1,"a text longer than inline ones"],[2,3]])"));
    for (Node* tree : {&built, &read}) {
        const Node taker(&(*tree)[1][0]);
        const AllocationCounter counter;
        EXPECT_THROW(Node copy(*tree), std::runtime_error);
        {
            Node target = Int(1);
            EXPECT_THROW(target = *tree, std::runtime_error);
            EXPECT_TRUE(target.IsEmpty());
        }
        EXPECT_EQ(counter.Frees(), counter.Calls());
    }
}

// Memory running out at any allocation of reading, copying or writing a
// tree loses nothing: on the quick path with items and members beyond their
// room, through the Parser, in copies and in the writer.
TEST(NodeStorage, MemoryRunningOutAtAnyAllocationLeavesNothingBehind) {
    const char* text = R"({"a":[[1,2],[3,"a text longer than inline ones",4.5,true,1/3,{"k":[]}]],)"
                       R"("o":[{"a":1},{"a":1,"b":2,"c":3}],"s":"x"})";
    Node read;
    ASSERT_TRUE(read.Deserialize(text));
    Node built = MakeArray({Int(1), Text("a text longer than inline ones"), MakeArray({Int(2)})});
    FailEachAllocationInTurn([&] {
        Node node;
        if (node.Deserialize(text)) {
            EXPECT_EQ(node.Serialize(), read.Serialize());
        }
    });
    FailEachAllocationInTurn([&] {
        tavrin::plugin::json::Parser parser(text);
        const std::unique_ptr<Node> node(parser.ParseValue());
    });
    // A copy into a node that is there already leaves it empty when it
    // fails, with nothing for its destructor to free again.
    const auto copyInto = [](Node& target, const auto& copy) {
        try {
            copy();
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(target.IsEmpty());
            throw;
        }
    };
    for (Node* tree : {&read, &built}) {
        FailEachAllocationInTurn([&] { const Node copy(*tree); });
        FailEachAllocationInTurn([&] {
            Node target = Int(1);
            copyInto(target, [&] { target = *tree; });
        });
        // The copy handler as a host calls it.
        FailEachAllocationInTurn([&] {
            Node target;
            target._type = tree->_type;
            target._destroy = tree->_destroy;
            target._create = tree->_create;
            copyInto(target, [&] { tree->_copy(&target, tree->_buf); });
        });
        FailEachAllocationInTurn([&] { (void)tree->Serialize(); });
        // A member whose copy failed is left empty (appended when new); a
        // member whose appending failed is not there.
        FailEachAllocationInTurn([&] {
            Node members = MakeObject({{"a", Int(1)}});
            for (const char* key : {"a", "z"}) {
                try {
                    members.AddOrChange(key, *tree);
                } catch (const std::bad_alloc&) {
                    EXPECT_TRUE(members.HasKey(key) ? members[key].IsEmpty() : members.Size() == 1) << key;
                    throw;
                }
            }
        });
    }
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
    // A member set to a copy that fails is left as that target: an existing
    // member in its place, a new one appended.
    Node members = MakeObject({{"a", Int(1)}, {"b", Int(2)}});
    EXPECT_THROW(members.AddOrChange("A", source), std::runtime_error);
    EXPECT_THROW(members.AddOrChange("c", source), std::runtime_error);
    EXPECT_EQ(members.Size(), 3u);
    for (int at : {0, 2}) EXPECT_TRUE(members.As<Node::Object>()[at].value.IsEmpty()) << at;
    EXPECT_EQ(std::string(members["a"].Type()) + members["c"].Type() + members["b"].Serialize(), "ArrayArray2");
    Node read;  // the same of a value read from text
    ASSERT_TRUE(read.Deserialize("[\"a text longer than inline ones\",2]"));
    Node readTaker(&read[0]);
    EXPECT_THROW(Node copy(read[0]), std::runtime_error);
    EXPECT_EQ(readTaker.Serialize(), "\"a text longer than inline ones\"");
    ASSERT_TRUE(read.Deserialize(R"([[1,"a text longer than inline ones"]])"));
    const Node containerTaker(&read[0]);  // a container taken from a read tree copies as it would have
    EXPECT_EQ(Node(containerTaker).Serialize(), R"([1,"a text longer than inline ones"])");
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

std::string Array(const char* type) { return std::string("json node type Array required! this type is ") + type; }
const char kObject[] = "json node type Object required!";

TEST(NodeContainer, RefusedOperationsLogOneLineAndChangeNothing) {
    struct Refusal {
        const char* name;
        Node (*make)();
        std::function<bool(Node&)> operation;  // true when it returned its refusal value
        const char* function;
        std::string message;
    };
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
    LogCapture log;  // empty or taken-from nodes are no arrays
    Node empty;
    EXPECT_EQ(&empty[0], &empty);
    Node array = Numbers();
    Node taker(&array);
    EXPECT_EQ(&array[0], &array);
    // The kind of a node of no kind is asked for when its line reaches it:
    // that line stands inside the refusal's, as in a chain of insertions.
    const auto refusedOfNoKind = [](const char* function) {
        const std::string line = RedLine(kSource, function, Array(""));
        return line.substr(0, line.size() - std::strlen("\n\033[0m")) + kUnknown + "\n\033[0m";
    };
    EXPECT_EQ(log.Lines(), refusedOfNoKind("operator[]") + RedLine(kSource, "operator[]", Array("Array")));
    log.Reset();
    EXPECT_FALSE(empty.Remove(0));
    EXPECT_EQ(log.Lines(), refusedOfNoKind("Remove"));
}

// Memory running out in AddOrChange: in the copy (the first allocation), the
// new member is left empty; in appending it (the second), it is not added.
TEST(NodeContainer, AddOrChangeOutOfMemoryInTheCopyOrInTheAppending) {
    const Node five = Int(5);
    for (const std::size_t failing : {1, 2}) {
        Node members = MakeObject({{"a", Int(1)}});
        members.As<Node::Object>().shrink_to_fit();  // the next member needs new room
        {
            const FailingAllocation fail(failing);
            EXPECT_THROW(members.AddOrChange("z", five), std::bad_alloc);
        }
        EXPECT_EQ(std::make_tuple(members.HasKey("z"), members.Size()),
                  std::make_tuple(failing == 1, failing == 1 ? std::size_t{2} : std::size_t{1}));
    }
}

TEST(NodeContainer, ChangesGiveTheirTreesKeysIgnoreAsciiCase) {
    const std::vector<std::pair<std::function<Node()>, const char*>> cases = {
        {[] { Node n = Numbers(); n[0] = Text("a"); return n; }, R"(["a",2,3])"},
        {[] { Node n = Members(); n["MODE"] = Int(7); n["d"]; n["d"] = Int(4); return n; },
         R"({"Mode":7,"b":2,"c":3,"d":4})"},
        {[] { Node n = MakeArray({}), e = MakeArray({Int(1)});
              return n.Insert(e) && e.Insert(Int(2)) && n.Insert(n) ? n : Node(); },
         "[[1],[[1]]]"},
        {[] { Node n = MakeObject({{"x", Int(0)}}); return n.Insert("a", Int(1)) && n.Insert("y", Int(9)) &&
              n.Insert("a", Int(2)) && n.Insert("A", Int(3)) ? n : Node(); },
         R"({"x":0,"a":[[1,2],3],"y":9})"},
        {[] { Node n = MakeObject({{"a", MakeArray({Int(1)})}}); n.Insert("a", n["a"]); return n; },
         R"({"a":[[1],[1]]})"},
        {[] { Node n = Members(); return n.AddOrChange("B", Text("x")) && n.AddOrChange("e", Int(5)) ? n : Node(); },
         R"({"Mode":1,"b":"x","c":3,"e":5})"},
        {[] { Node n = MakeObject({{"a", MakeArray({Int(1), Int(2)})}});
              for (const char* k : {"b", "c", "d", "e", "f"}) { n.AddOrChange(k, n["a"]); } return n; },
         R"({"a":[1,2],"b":[1,2],"c":[1,2],"d":[1,2],"e":[1,2],"f":[1,2]})"},
        {[] { Node n = Numbers(); return n.Remove(0) ? n : Node(); }, "[2,3]"},
        {[] { Node n = Numbers(); return n.Remove(2) ? n : Node(); }, "[1,2]"},
        {[] { Node n = Members(); return n.Remove(std::string("B")) && n.HasKey("c") ? n : Node(); },
         R"({"Mode":1,"c":3})"},  // the members after it still found by their keys
    };
    LogCapture log;
    for (const auto& [make, text] : cases) EXPECT_EQ(make().Serialize(), text);
    // The pair a repeated key makes has room for exactly its two values.
    Node pair = MakeObject({{"a", Int(1)}});
    ASSERT_TRUE(pair.Insert("a", Int(2)));
    EXPECT_EQ(pair["a"].As<Node::Array>().capacity(), 2u);
    Node object = Members();
    EXPECT_TRUE(object.HasKey("MODE") && object.HasKey("mode") && !object.HasKey("Mod"));
    EXPECT_EQ(object["mODE"].As<long long>(), 1);
    EXPECT_EQ(std::make_tuple(object.Size(), Numbers().Size(), MakeObject({}).Size(), Text("abc").Size()),
              std::make_tuple(3u, 3u, 0u, 0u));
    EXPECT_EQ(Node().Size(), 0u);
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeForeach, VisitsInOrderByReferenceUntilFalseOnlyItsKind) {
    LogCapture log;
    Node array = Numbers();
    EXPECT_TRUE(array.Foreach([](Node& item) { item = Int(item.As<long long>() * 10); return true; }));
    std::vector<long long> seen;
    EXPECT_FALSE(array.Foreach([&](Node& item) { seen.push_back(item.As<long long>()); return seen.size() < 2; }));
    EXPECT_EQ(seen, (std::vector<long long>{10, 20}));
    Node object = MakeObject({{"First", Int(1)}, {"second", Int(2)}});
    object["FIRST"] = Int(3);
    std::string walk;
    EXPECT_TRUE(object.Foreach([&](const char* key, Node& value) {
        walk += key + ("=" + value.Serialize()) + ";";
        return true;
    }));
    EXPECT_EQ(walk, "First=3;second=2;");
    int calls = 0;
    EXPECT_FALSE(object.Foreach([&](const char*, Node&) { return ++calls > 1; }));
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(array.Foreach([&](Node&) { ++calls; array = Node(); return true; }));  // emptied: the walk ends
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(Members().Foreach([&](Node&) { return ++calls > 0; }));
    EXPECT_FALSE(Numbers().Foreach([&](const char*, Node&) { return ++calls > 0; }));
    EXPECT_FALSE(Node().Foreach([&](Node&) { return ++calls > 0; }));
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(log.Text(), "");
    EXPECT_TRUE(MakeArray({}).Foreach(std::function<bool(Node&)>()));
    EXPECT_THROW(Numbers().Foreach(std::function<bool(Node&)>()), std::bad_function_call);
    EXPECT_THROW(Members().Foreach(std::function<bool(const char*, Node&)>()), std::bad_function_call);
}

// A callback that breaks the rule: the walk takes the count once, so what it
// adds is not visited, and it stops where the container now ends.
TEST(NodeForeach, ChangesByTheCallbackNeitherExtendNorOverrunTheWalk) {
    int calls = 0;
    Node grown = Numbers();
    EXPECT_TRUE(grown.Foreach([&](Node&) { ++calls; return grown.Insert(Int(9)); }));
    Node members = Members();
    EXPECT_TRUE(members.Foreach([&](const char*, Node&) {
        return members.AddOrChange(std::to_string(++calls), Int(0));
    }));
    EXPECT_EQ(std::make_tuple(calls, grown.Size(), members.Size()), std::make_tuple(6, 6u, 6u));
    int itemCalls = 0, memberCalls = 0;
    Node shrunk = Numbers();
    EXPECT_TRUE(shrunk.Foreach([&](Node&) { return ++itemCalls > 1 || shrunk.Remove(2); }));
    Node fewer = Members();
    EXPECT_TRUE(fewer.Foreach([&](const char*, Node&) { return ++memberCalls > 1 || fewer.Remove(std::string("c")); }));
    EXPECT_EQ(std::make_pair(itemCalls, memberCalls), std::make_pair(2, 2));
}

// Objects and arrays nested `depth` levels deep around the int64 1, arrays
// only or taking turns with objects; built by moving each level into the
// next, so building is linear.
Node Chain(int depth, bool mixed) {
    Node node = Int(1);
    for (int level = 0; level < depth; ++level) {
        Node outer = Default<Node::Array>();
        if (mixed && level % 2 == 1) {
            outer = Default<Node::Object>();
            outer.As<Node::Object>()["k"] = std::move(node);
        } else {
            outer.As<Node::Array>().push_back(std::move(node));
        }
        node = std::move(outer);
    }
    return node;
}

template <class Operation>
std::pair<std::size_t, std::size_t> Allocations(Operation operation) {
    AllocationCounter counter;
    operation();
    return {counter.Calls(), counter.Bytes()};
}

// Copying allocates per level a vector and its one-element buffer, the int64
// at the bottom, and a few for its work lists; freeing, a few for its work
// list. Doubling the depth may at most double the allocations of assigning
// and writing (plus a little for buffers that grow by doubling); a quadratic
// cost would quadruple them.
TEST(NodeDepth, CopyAssignWriteAndFreeAreLinear) {
    for (bool mixed : {false, true}) {
        Node small = Chain(1000, mixed), large = Chain(2000, mixed);
        AllocationCounter counter;
        {
            Node copy(small);
            copy = large;
            const FailingAllocation noWorkList(1);
            copy = Node();  // freed by recursion, without memory for the work list
            EXPECT_TRUE(noWorkList.Reached());
        }
        EXPECT_EQ(counter.Frees(), counter.Calls()) << "copying, assigning and freeing leave nothing behind";
        const std::size_t calls = Allocations([&] { Node copy(small); }).first;
        EXPECT_GE(calls, 2u * 1000 + 1);
        EXPECT_LE(calls, 2u * 1000 + 1 + 8);
        EXPECT_LE(Allocations([&] { large = Node(); }).first, 16u);
        large = Chain(2000, mixed);
        for (const std::function<void(Node&)>& operation :
             {std::function<void(Node&)>([](Node& tree) { Node target = Chain(3, true); target = tree; }),
              std::function<void(Node&)>([](Node& tree) { EXPECT_FALSE(tree.Serialize().empty()); })}) {
            const auto smallCost = Allocations([&] { operation(small); });
            const auto largeCost = Allocations([&] { operation(large); });
            EXPECT_GT(smallCost.first, 0u);
            EXPECT_LE(largeCost.first, 2 * smallCost.first + 32);
            EXPECT_LE(largeCost.second, 2 * smallCost.second + 4096);
        }
    }
}

// Containers read from text, each moved into the next: every level's value
// lives in a cell, as in a parsed tree, but far deeper than a parser admits.
Node ChainOfReadContainers(int depth) {
    Node node;
    EXPECT_TRUE(node.Deserialize("[1]"));
    for (int level = 1; level < depth; ++level) {
        Node outer;
        outer.Deserialize(level % 2 == 0 ? "[]" : "{}");
        if (level % 2 == 0)
            outer.As<Node::Array>().push_back(std::move(node));
        else
            outer.As<Node::Object>()["k"] = std::move(node);
        node = std::move(outer);
    }
    return node;
}

TEST(NodeDepth, VeryDeepTreesNeedNoDeepStack) {
    EXPECT_TRUE(RunOnStack(256 * 1024, [] {
        for (int depth : {100, 20000}) {
            const AllocationCounter counter;
            {
                Node tree = ChainOfReadContainers(depth);
                Node copy(tree);
                EXPECT_EQ(copy.Serialize(), tree.Serialize());
            }
            EXPECT_EQ(counter.Frees(), counter.Calls());
        }
        {
            // A chain freed last of its array, after forty containers beside
            // it: each gives back the levels it took, so the chain stays
            // within the bound too.
            Node array;
            std::string besides;
            for (int i = 0; i < 40; ++i) besides += ",[]";
            ASSERT_TRUE(array.Deserialize("[0" + besides + "]"));
            array[0] = ChainOfReadContainers(20000);
        }
        for (int depth : {tavrin::plugin::json::Parser::kDefaultMaxDepth, 20000}) {
            for (bool mixed : {false, true}) {
                const Node tree = Chain(depth, mixed);
                Node copy(tree);
                Node assigned = Int(0);
                assigned = copy;
                const std::string original = Node(tree).Serialize();
                EXPECT_EQ(assigned.Serialize(), original);
                EXPECT_EQ(original.size(), (mixed ? 4u : 2u) * depth + 1);
            }
        }
    }));
}

}  // namespace
