// The deepest documents the legacy reader admits are read, copied, assigned,
// written and destroyed on a 256 KiB thread stack.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "json/Parser.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "stress/DeepDocuments.h"
#include "support/SmallStack.h"

namespace tavrin::test {
namespace {

constexpr std::size_t kSmallStack = 256 * 1024;
constexpr std::size_t kDeepest = tavrin::plugin::json::Parser::kDefaultMaxDepth;

TEST(LegacyDepthStressTest, DeepestDocumentsOnSmallStack) {
    for (const std::string& text :
         {NestedArrays(kDeepest, "1"), NestedObjects(kDeepest, "\"x\""), AlternatingNesting(kDeepest)}) {
        EXPECT_TRUE(RunOnStack(kSmallStack, [&text] {
            const json::Value read = json::Deserialize(text);
            ASSERT_TRUE(json::Serialize(read) == text);
            json::Value copy(read);
            json::Value assigned(1);
            assigned = copy;
            json::Value moved(std::move(copy));
            EXPECT_TRUE(json::Serialize(assigned) == text);
            EXPECT_TRUE(json::Serialize(moved) == text);
        })) << text.substr(0, 12);
    }
}

}  // namespace
}  // namespace tavrin::test
