#include <gtest/gtest.h>

#include <string>

#include "json/Parser.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "json/legacy/Value.h"
#include "support/SmallStack.h"

using tavrin::plugin::json::Parser;

namespace {

constexpr std::size_t kSmallStack = 128 * 1024;
constexpr int kDeepest = Parser::kDefaultMaxDepth;

std::string Repeat(const std::string& piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += piece;
    return text;
}

// `depth` arrays inside each other around `core`.
std::string NestedArrays(int depth, const std::string& core) {
    return Repeat("[", depth) + core + Repeat("]", depth);
}

// `depth` objects inside each other, each holding the next under "a".
std::string NestedObjects(int depth, const std::string& core) {
    return Repeat("{\"a\":", depth) + core + Repeat("}", depth);
}

// Objects and arrays in turn: {"a":[{"a":[ ... ]}]}.
std::string NestedMixed(int depth, const std::string& core) {
    std::string open;
    std::string close;
    for (int level = 0; level < depth; ++level) {
        open += level % 2 == 0 ? "{\"a\":" : "[";
        close.insert(0, level % 2 == 0 ? "}" : "]");
    }
    return open + core + close;
}

// Reads, copies, assigns, writes and destroys the document on a small stack;
// gives what the copy writes.
std::string ReadBackOnSmallStack(const std::string& text) {
    std::string written;
    const bool ran = tavrin::test::RunOnStack(kSmallStack, [&] {
        const json::Value value = json::Deserialize(text);
        json::Value copy(value);
        json::Value assigned(1);
        assigned = copy;
        written = assigned.GetType() == json::NullVal ? "null" : json::Serialize(assigned);
    });
    EXPECT_TRUE(ran);
    return written;
}

}  // namespace

TEST(LegacyDepth, TheDeepestAdmittedDocumentsWorkOnASmallStack) {
    for (const std::string& text : {NestedArrays(kDeepest, "1"), NestedObjects(kDeepest, "\"x\""),
                                    NestedMixed(kDeepest, "true")})
        EXPECT_EQ(ReadBackOnSmallStack(text), text);
}

TEST(LegacyDepth, AContainerBeyondTheBoundReadsAsNull) {
    EXPECT_EQ(ReadBackOnSmallStack(NestedArrays(kDeepest + 1, "1")), NestedArrays(kDeepest, ""));
    EXPECT_EQ(ReadBackOnSmallStack(NestedObjects(kDeepest + 1, "1")), NestedObjects(kDeepest, "null"));
    // The rest of the document still reads.
    const std::string text = "[" + NestedArrays(kDeepest, "1") + ",2]";
    EXPECT_EQ(ReadBackOnSmallStack(text), "[" + NestedArrays(kDeepest - 1, "") + ",2]");
}

TEST(LegacyDepth, FarDeeperDocumentsNeitherOverflowNorFail) {
    EXPECT_EQ(ReadBackOnSmallStack(NestedArrays(20000, "1")), NestedArrays(kDeepest, ""));
    // The innermost admitted container is an array, which drops the object.
    EXPECT_EQ(ReadBackOnSmallStack(NestedMixed(20001, "1")), NestedMixed(kDeepest, ""));
}
