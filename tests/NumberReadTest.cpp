// Numbers are read and written without regard to the process locale: both
// readers and writers under a decimal-comma locale. (What the parser makes
// of each number text is in the conformance corpus.)
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "json/JsonNode.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/DecimalCommaLocale.h"

TEST(NumberRead, TheProcessLocaleChangesNothing) {
    tavrin::test::DecimalCommaLocale comma;
    if (!comma.Active()) GTEST_SKIP() << "no locale with a decimal comma could be set";
    char written[32];
    std::snprintf(written, sizeof written, "%.1f", 2.5);
    ASSERT_STREQ(written, "2,5");  // the locale is in force

    tavrin::plugin::json::Node node;
    ASSERT_TRUE(node.Deserialize("[2.5,1e-3,-1.25e3,7,1/2,\"a b\",{\"k\":0.25},1e400]"));
    EXPECT_EQ(node.Serialize(), "[2.5,0.001,-1250.0,7,1/2,\"a b\",{\"k\":0.25},1e999]");
    json::Value decimal;
    decimal = 2.5f;
    EXPECT_EQ(SerializeValue(decimal), "2.5");
    decimal = -0.125;
    EXPECT_EQ(SerializeValue(decimal), "-0.125");
    const std::string text = "{\"a\":[1,-2,1/2],\"b\":\" x \",\"c\":TRUE}";
    EXPECT_EQ(json::Serialize(json::Deserialize(text)), "{\"a\":[1,-2,1/2],\"b\":\"x\",\"c\":true}");
}
