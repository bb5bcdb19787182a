// Deep node trees: copying, assigning, writing and freeing them needs no deep
// stack and allocates in proportion to their size.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/AllocationCounter.h"
#include "support/NodeBuild.h"
#include "support/SmallStack.h"

using namespace tavrin::test;  // node builders, allocation counter, small stack

namespace {

// Objects and arrays nested alternately `depth` levels deep: [{"k":[...1...]}].
Node MixedChain(int depth) {
    Node node = Int(1);
    for (int level = 0; level < depth; ++level)
        node = Nest(std::move(node), level % 2 == 0);
    return node;
}

// Copies, assigns, writes and destroys `tree`; the copy writes the same text.
void ExerciseTree(const Node& tree) {
    Node copy(tree);
    Node assigned = Int(0);
    assigned = copy;
    const std::string original = Node(tree).Serialize();
    EXPECT_EQ(assigned.Serialize(), original);
    EXPECT_FALSE(original.empty());
}

template <class Operation>
std::pair<std::size_t, std::size_t> Allocations(Operation operation) {
    AllocationCounter counter;
    operation();
    return {counter.Calls(), counter.Bytes()};
}

TEST(NodeDepth, CopyAllocatesOncePerLevel) {
    const Node tree = Chain(1000);
    // Per level a vector and its one-element buffer, the int64 at the bottom,
    // and a few for the work lists of copying and freeing.
    const std::size_t calls = Allocations([&] { Node copy(tree); }).first;
    EXPECT_GE(calls, 2u * 1000 + 1);
    EXPECT_LE(calls, 2u * 1000 + 1 + 8);
}

// Doubling the depth may at most double the allocations of an operation
// (plus a little for buffers that grow by doubling); a quadratic cost would
// quadruple them.
TEST(NodeDepth, CopyAssignWriteAndFreeAreLinear) {
    const std::function<void(Node&)> operations[] = {
        [](Node& tree) { Node copy(tree); },
        [](Node& tree) { Node target = MixedChain(3); target = tree; },
        [](Node& tree) { EXPECT_FALSE(tree.Serialize().empty()); },
        [](Node& tree) { Node copy(tree); EXPECT_LE(Allocations([&] { copy = Node(); }).first, 16u); },
    };
    for (Node (*build)(int) : {&Chain, &MixedChain}) {
        for (const auto& operation : operations) {
            Node small = build(1000), large = build(2000);
            const auto smallCost = Allocations([&] { operation(small); });
            const auto largeCost = Allocations([&] { operation(large); });
            EXPECT_GT(smallCost.first, 0u);
            EXPECT_LE(largeCost.first, 2 * smallCost.first + 32);
            EXPECT_LE(largeCost.second, 2 * smallCost.second + 4096);
        }
    }
}

TEST(NodeDepth, VeryDeepTreesNeedNoDeepStack) {
    EXPECT_TRUE(RunOnStack(256 * 1024, [] {
        for (int depth : {tavrin::plugin::json::Parser::kDefaultMaxDepth, 20000}) {
            ExerciseTree(Chain(depth));
            ExerciseTree(MixedChain(depth));
        }
    }));
}

}  // namespace
