#include <gtest/gtest.h>

#include <string>

#include "json/Parser.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/DeepDocuments.h"
#include "support/SmallStack.h"

using namespace tavrin::test;  // documents, small stack

namespace {

constexpr std::size_t kDeepest = tavrin::plugin::json::Parser::kDefaultMaxDepth;

// Reads, copies, assigns, writes and destroys the document on a small stack;
// gives what the copy writes.
std::string ReadBackOnSmallStack(const std::string& text) {
    std::string written;
    EXPECT_TRUE(RunOnStack(128 * 1024, [&] {
        const json::Value value = json::Deserialize(text);
        json::Value copy(value);
        json::Value assigned(1);
        assigned = copy;
        written = assigned.GetType() == json::NullVal ? "null" : json::Serialize(assigned);
    }));
    return written;
}

// A container beyond the bound reads as null: an array drops it, an object
// keeps a null member, and the rest of the document still reads.
TEST(LegacyDepth, DeepestAdmittedDocumentsWorkOnASmallStackDeeperContainersReadAsNull) {
    for (const std::string& text : {NestedArrays(kDeepest, "1"), NestedObjects(kDeepest, "\"x\""),
                                    AlternatingNesting(kDeepest, "true")})
        EXPECT_EQ(ReadBackOnSmallStack(text), text);
    EXPECT_EQ(ReadBackOnSmallStack(NestedArrays(kDeepest + 1, "1")), NestedArrays(kDeepest, ""));
    EXPECT_EQ(ReadBackOnSmallStack(NestedObjects(kDeepest + 1, "1")), NestedObjects(kDeepest, "null"));
    EXPECT_EQ(ReadBackOnSmallStack("[" + NestedArrays(kDeepest, "1") + ",2]"),
              "[" + NestedArrays(kDeepest - 1, "") + ",2]");
    EXPECT_EQ(ReadBackOnSmallStack(NestedArrays(20000, "1")), NestedArrays(kDeepest, ""));
    EXPECT_EQ(ReadBackOnSmallStack(AlternatingNesting(20001, "1")), AlternatingNesting(kDeepest, "null"));
}

}  // namespace
