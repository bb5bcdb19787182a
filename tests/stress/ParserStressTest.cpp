// The readers on a 256 KiB thread stack: the legacy reader cuts documents
// nested a million deep at its bound without exhausting the stack (the node
// reader's refusal is in ParserDepthTest), and every byte value in every
// place of a document gives a result without a fault in both (what Node
// accepts writes a text that it reads back).

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/DeepDocuments.h"
#include "support/LogCapture.h"
#include "support/SmallStack.h"

namespace tavrin::test {
namespace {

using tavrin::plugin::json::Node;

constexpr std::size_t kSmallStack = 256 * 1024;
constexpr std::size_t kMillion = 1000 * 1000;
constexpr std::size_t kDeepest = tavrin::plugin::json::Parser::kDefaultMaxDepth;

TEST(ParserStress, LegacyCutsMillionDeepNestingAtTheBoundOnSmallStack) {
    // Containers beyond the bound read as null in their place, which an
    // array drops; an unbalanced text is refused whole. (Each level below the
    // bound scans the rest of the text for its closing bracket, so this costs
    // the bound times the text: seconds for a million.)
    const std::vector<std::pair<std::string, std::string>> cases = {
        {NestedArrays(kMillion), NestedArrays(kDeepest)},
        {std::string(kMillion, '['), ""},
    };
    for (const auto& [text, written] : cases) {
        EXPECT_TRUE(RunOnStack(kSmallStack, [&text = text, &written = written] {
            const json::Value value = json::Deserialize(text);
            EXPECT_TRUE(json::Serialize(value) == written);
        }));
    }
}

// A document for every byte value `b` in every place a byte can stand.
std::vector<std::string> DocumentsWithByte(char b) {
    const std::string c(1, b);
    return {c + "[]", "[" + c + "]", "[\"" + c + "\"]", "{\"" + c + "\":1}", "{\"k\"" + c + ":1}",
            "[1" + c + "]", "[1" + c + "2]", "[\"\\" + c + "\"]", "[1/" + c + "]", "[1." + c + "]",
            "[t" + c + "]", "{" + c + "}"};
}

TEST(ParserStress, EveryByteValueInEveryPlaceOnSmallStack) {
    EXPECT_TRUE(RunOnStack(kSmallStack, [] {
        LogCapture log;
        for (int code = 0; code < 256; ++code) {
            for (const std::string& text : DocumentsWithByte(static_cast<char>(code))) {
                Node node;
                if (node.Deserialize(text)) {
                    Node again;
                    EXPECT_TRUE(again.Deserialize(node.Serialize())) << "byte " << code;
                }
                json::Serialize(json::Deserialize(text));
            }
        }
    }));
}

}  // namespace
}  // namespace tavrin::test
