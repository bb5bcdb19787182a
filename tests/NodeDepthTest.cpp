#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/AllocationCounter.h"
#include "support/LogCapture.h"
#include "support/NodeBuild.h"
#include "support/SmallStack.h"

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using tavrin::test::AllocationCounter;
using tavrin::test::Chain;
using tavrin::test::Int;

namespace {

// Objects and arrays nested alternately `depth` levels deep:
// {"k":[{"k":[...1...]}]}.
Node MixedChain(int depth) {
    Node node = Int(1);
    for (int level = 0; level < depth; ++level) {
        Node outer;
        if (level % 2 == 0) {
            outer.Init<Node::Array>(nullptr);
            outer.As<Node::Array>().push_back(std::move(node));
        } else {
            outer.Init<Node::Object>(nullptr);
            outer.As<Node::Object>()["k"] = std::move(node);
        }
        node = std::move(outer);
    }
    return node;
}

// Copies, assigns, serializes and destroys `tree`; the text of the copy must
// equal the text of the original.
void ExerciseTree(const Node& tree) {
    Node copy(tree);
    Node assigned = Int(0);
    assigned = copy;
    const std::string original = Node(tree).Serialize();
    EXPECT_EQ(assigned.Serialize(), original);
    EXPECT_FALSE(original.empty());
}

constexpr std::size_t kSmallStack = 256 * 1024;

// Allocations made by `operation`.
struct Cost {
    std::size_t calls;
    std::size_t bytes;
};

template <class Operation>
Cost Measure(Operation operation) {
    AllocationCounter counter;
    operation();
    return {counter.Calls(), counter.Bytes()};
}

// Doubling the depth of the tree may at most double the allocations of an
// operation (plus a little for buffers that grow by doubling); a cost that
// grows with the square of the size quadruples.
template <class Operation>
void ExpectLinear(Node (*build)(int), Operation operation) {
    Node small = build(1000);
    Node large = build(2000);
    const Cost smallCost = Measure([&] { operation(small); });
    const Cost largeCost = Measure([&] { operation(large); });
    EXPECT_GT(smallCost.calls, 0u);
    EXPECT_LE(largeCost.calls, 2 * smallCost.calls + 32);
    EXPECT_LE(largeCost.bytes, 2 * smallCost.bytes + 4096);
}

void Copy(const Node& tree) { Node copy(tree); }
void Assign(const Node& tree) {
    Node target = MixedChain(3);
    target = tree;
}
void Write(Node& tree) { EXPECT_FALSE(tree.Serialize().empty()); }
void Free(const Node& tree) {
    Node copy(tree);
    const Cost cost = Measure([&] { copy = Node(); });
    EXPECT_LE(cost.calls, 16u);
}

}  // namespace

TEST(NodeDepth, CopyAllocatesOncePerLevel) {
    const Node tree = Chain(1000);
    // Per level a vector and its one-element buffer, the int64 at the bottom,
    // and a few for the work lists of copying and freeing.
    const std::size_t calls = Measure([&] { Copy(tree); }).calls;
    EXPECT_GE(calls, 2u * 1000 + 1);
    EXPECT_LE(calls, 2u * 1000 + 1 + 8);
}

TEST(NodeDepth, CopyAssignWriteAndFreeAreLinear) {
    for (Node (*build)(int) : {&Chain, &MixedChain}) {
        ExpectLinear(build, Copy);
        ExpectLinear(build, Assign);
        ExpectLinear(build, Write);
        ExpectLinear(build, Free);
    }
}

TEST(NodeDepth, VeryDeepTreeNeedsNoDeepStack) {
    EXPECT_TRUE(tavrin::test::RunOnStack(kSmallStack, [] {
        ExerciseTree(Chain(20000));
        ExerciseTree(MixedChain(20000));
    }));
}

TEST(NodeDepth, DeepestParsableTreeFitsSmallStack) {
    const int depth = Parser::kDefaultMaxDepth;
    EXPECT_TRUE(tavrin::test::RunOnStack(kSmallStack, [depth] {
        ExerciseTree(Chain(depth));
        ExerciseTree(MixedChain(depth));
    }));
}
