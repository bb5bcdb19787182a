// "cmd_json_to_attrset_string": argument checks in order, the "p1" address
// forms, and the result written through the address.
#include <gtest/gtest.h>

#include <string>

#include "base/AttrSet.h"
#include "support/ConvertFixture.h"

namespace {

using tavrin::base::AttrSet;

class ConvertCommandTest : public tavrin::test::ConvertFixture {
protected:
    std::string RedCommand(const char* message) {
        return Red("cmdConvertJsonToAttrSetString",
                   (std::string("TAVRIN_LOG_ERROR(\"") + message + "\")").c_str(), message);
    }
};

TEST_F(ConvertCommandTest, ConvertsThroughTheAddressWithOrWithoutPrefix) {
    for (const char* prefix : {"0x", "0X", "", "  "}) {
        std::string out;
        AttrSet args;
        args.Add("p0", "{\"a\":1,\"b\":\"x\"}");
        args.Add("p1", tavrin::test::HexAddress(&out, prefix).c_str());
        EXPECT_TRUE(Command(args)) << prefix;
        AttrSet expected;
        expected.Add("a", "1");
        expected.Add("b", "x");
        EXPECT_EQ(out, expected.ToString(false)) << prefix;
        EXPECT_EQ(args.Size(), 2u);
    }
}

TEST_F(ConvertCommandTest, MissingTextIsCheckedFirst) {
    AttrSet args;
    EXPECT_FALSE(Command(args));
    EXPECT_EQ(_log.Text(), RedCommand("!src"));
}

TEST_F(ConvertCommandTest, MissingAddressIsCheckedSecond) {
    AttrSet args;
    args.Add("p0", "[1]");
    EXPECT_FALSE(Command(args));
    EXPECT_EQ(_log.Text(), Red("cmdConvertJsonToAttrSetString", "\"!ap.Get", "!ap.Get(\"p1\",out)"));
}

TEST_F(ConvertCommandTest, ZeroAddressIsRefusedBeforeParsing) {
    for (const char* address : {"0", "0x0", "zz", ""}) {
        AttrSet args;
        args.Add("p0", "not json at all");
        args.Add("p1", address);
        EXPECT_FALSE(Command(args)) << address;
        EXPECT_EQ(_log.Text(), RedCommand("!out")) << address;
        _log.Reset();
    }
}

TEST_F(ConvertCommandTest, FailedParseLeavesTheStringUntouched) {
    std::string out = "earlier content";
    AttrSet args;
    args.Add("p0", "[1,");
    args.Add("p1", tavrin::test::HexAddress(&out, "0x").c_str());
    EXPECT_FALSE(Command(args));
    EXPECT_EQ(out, "earlier content");
    const std::string last =
        Red("convertJsonToAttrSetString", "\"!node.Deserialize(src)\"", "!node.Deserialize(src)");
    ASSERT_GE(_log.Text().size(), last.size());
    EXPECT_EQ(_log.Text().substr(_log.Text().size() - last.size()), last);
}

TEST_F(ConvertCommandTest, TopLevelArrayOfIntegers) {
    std::string out;
    AttrSet args;
    args.Add("p0", "[1,2]");
    args.Add("p1", tavrin::test::HexAddress(&out, "").c_str());
    EXPECT_TRUE(Command(args));
    EXPECT_EQ(out, "1+2");
    EXPECT_EQ(_log.Text().find("/cmdConvertJsonToAttrSetString:"), std::string::npos);
    const std::string first = Cyan("convertJsonToAttrSetString", "\"src=\"", "src=[1,2]");
    EXPECT_EQ(_log.Text().rfind(first, 0), 0u);
}

}  // namespace
