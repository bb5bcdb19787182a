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

}  // namespace

TEST(NodeDepth, DeepestParsableTreeFitsSmallStack) {
    const int depth = Parser::kDefaultMaxDepth;
    EXPECT_TRUE(tavrin::test::RunOnStack(kSmallStack, [depth] {
        ExerciseTree(Chain(depth));
        ExerciseTree(MixedChain(depth));
    }));
}
