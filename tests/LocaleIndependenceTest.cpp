// Numbers read and write the same whatever locale the host process has set:
// under a locale with a decimal comma, 1.5 still reads as 1.5 and is written
// as 1.5. (The legacy reader has no decimal numbers; its writer is checked.)

#include <gtest/gtest.h>

#include <string>

#include "json/JsonNode.h"
#include "json/legacy/Serialize.h"
#include "json/legacy/Value.h"
#include "support/DecimalCommaLocale.h"

namespace tavrin::test {
namespace {

using tavrin::plugin::json::Node;

using NodeUnderDecimalCommaLocale = DecimalCommaLocale;

TEST_F(NodeUnderDecimalCommaLocale, ReadsAndWritesDecimalPoint) {
    Node node;
    ASSERT_TRUE(node.Deserialize("[1.5,-0.25,2.5e3,7]"));
    EXPECT_EQ(node[0].As<double>(), 1.5);
    EXPECT_EQ(node[1].As<double>(), -0.25);
    EXPECT_EQ(node[2].As<double>(), 2500.0);

    Node written;
    ASSERT_TRUE(written.Deserialize("[1.5,-0.25,7]"));
    EXPECT_EQ(written.Serialize(), "[1.5,-0.25,7]");
}

TEST_F(NodeUnderDecimalCommaLocale, WritesBuiltDoubleWithDecimalPoint) {
    EXPECT_EQ(Node(1.5).Serialize(), "1.5");
}

using LegacyUnderDecimalCommaLocale = DecimalCommaLocale;

TEST_F(LegacyUnderDecimalCommaLocale, WritesDecimalPoint) {
    json::Value value;
    value = 1.5;
    EXPECT_EQ(SerializeValue(value), "1.5");
    value = 1.5f;
    EXPECT_EQ(SerializeValue(value), "1.5");
}

}  // namespace
}  // namespace tavrin::test
